#pragma once

#include "platform/PerformQueue.hpp"
#include "platform/RunLoop.hpp"

namespace vexto {

// A run loop on a virtual clock for tests: time moves only when the test says so.
class FakeRunLoop final : public RunLoop {
public:
    double now() const override { return now_; }

    void performAfterDelay(const void* target, std::string selector, PerformArgument argument,
                           double delay, RunLoopModes modes, std::function<void()> action) override;
    void cancelPreviousPerformRequests(const void* target, std::string_view selector,
                                       const PerformArgument& argument) override;
    void cancelPreviousPerformRequests(const void* target) override;

    // Moves the clock on without firing anything, and remembers how long was slept.
    void sleep(double seconds) override;
    void runFor(double seconds) override { advance(seconds); }

    // Moves the clock on by `seconds`, firing every perform that falls due on the way in time
    // order (scheduling order on ties), including performs scheduled while firing.
    void advance(double seconds);

    // The mode the loop pretends to run in (default: RunLoopMode::Default).
    void setMode(RunLoopMode mode) { mode_ = mode; }
    std::size_t pendingCount() const { return queue_.size(); }
    double totalSlept() const { return slept_; }

private:
    PerformQueue queue_;
    double now_ = 0.0;
    double slept_ = 0.0;
    RunLoopMode mode_ = RunLoopMode::Default;
};

} // namespace vexto
