#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace vexto {

// Stopping, continuing and watching processes by PID.
class ProcessSignals {
public:
    virtual ~ProcessSignals() = default;
    // False when the signal could not be sent.
    virtual bool stop(std::int32_t pid) = 0;
    virtual bool resume(std::int32_t pid) = 0;
    // None when the kernel has no such process.
    virtual std::optional<bool> isStopped(std::int32_t pid) = 0;
    // Calls `ended` from the run loop, once, when the process ends, for as long as the returned
    // watch is kept. None when it cannot be watched: it has ended already, or is not ours.
    virtual std::shared_ptr<void> watchForExit(std::int32_t pid, std::function<void()> ended) = 0;
};

} // namespace vexto
