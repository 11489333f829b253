#pragma once

#include "platform/PerformQueue.hpp"
#include "platform/RunLoop.hpp"

namespace vexto {

// A real run loop for hosts without a toolkit event loop: the monotonic clock, and waits that
// really wait between the performs that fall due.
class PollRunLoop final : public RunLoop {
public:
    double now() const override;

    void performAfterDelay(const void* target, std::string selector, PerformArgument argument,
                           double delay, RunLoopModes modes, std::function<void()> action) override;
    void cancelPreviousPerformRequests(const void* target, std::string_view selector,
                                       const PerformArgument& argument) override;
    void cancelPreviousPerformRequests(const void* target) override;

    void sleep(double seconds) override;
    void runFor(double seconds) override;

private:
    PerformQueue queue_;
};

} // namespace vexto
