#pragma once

#include <cstdint>
#include <optional>

namespace vexto {

// Stopping and continuing processes by PID.
class ProcessSignals {
public:
    virtual ~ProcessSignals() = default;
    // False when the signal could not be sent.
    virtual bool stop(std::int32_t pid) = 0;
    virtual bool resume(std::int32_t pid) = 0;
    // None when the kernel has no such process.
    virtual std::optional<bool> isStopped(std::int32_t pid) = 0;
};

} // namespace vexto
