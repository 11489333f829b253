#pragma once

#include "platform/PerformQueue.hpp"
#include "ports/RunLoop.hpp"

namespace vexto {

// What every run loop here shares: delayed performs kept in a queue against the loop's own
// clock. Subclasses supply the clock and how waiting works.
class QueuedRunLoop : public RunLoop {
public:
    void performAfterDelay(const void* target, std::string selector, PerformArgument argument,
                           double delay, RunLoopModes modes, std::function<void()> action) override;
    void cancelPreviousPerformRequests(const void* target, std::string_view selector,
                                       const PerformArgument& argument) override;
    void cancelPreviousPerformRequests(const void* target) override;

    std::size_t pendingCount() const { return queue_.size(); }

protected:
    PerformQueue queue_;
};

} // namespace vexto
