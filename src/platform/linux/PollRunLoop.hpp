#pragma once

#include "platform/QueuedRunLoop.hpp"

namespace vexto {

// A real run loop for hosts without a toolkit event loop: the monotonic clock, and waits that
// really wait between the performs that fall due.
class PollRunLoop final : public QueuedRunLoop {
public:
    double now() const override;
    void sleep(double seconds) override;
    void runFor(double seconds) override;
};

} // namespace vexto
