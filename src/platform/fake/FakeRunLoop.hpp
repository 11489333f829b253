#pragma once

#include "platform/QueuedRunLoop.hpp"

namespace vexto {

// A run loop on a virtual clock for tests: time moves only when the test says so.
class FakeRunLoop final : public QueuedRunLoop {
public:
    double now() const override { return now_; }

    // Moves the clock on without firing anything, and remembers how long was slept.
    void sleep(double seconds) override;
    void runFor(double seconds) override { advance(seconds); }

    // Moves the clock on by `seconds`, firing every perform that falls due on the way in time
    // order (scheduling order on ties), including performs scheduled while firing.
    void advance(double seconds);

    // The mode the loop pretends to run in (default: RunLoopMode::Default).
    void setMode(RunLoopMode mode) { mode_ = mode; }
    double totalSlept() const { return slept_; }

private:
    double now_ = 0.0;
    double slept_ = 0.0;
    RunLoopMode mode_ = RunLoopMode::Default;
};

} // namespace vexto
