#pragma once

#include "platform/DescriptorWatcher.hpp"
#include "platform/QueuedRunLoop.hpp"

#include <map>

namespace vexto {

// A real run loop for hosts without a toolkit event loop: the monotonic clock, and waits that
// really wait between the performs that fall due, woken early by watched descriptors.
class PollRunLoop final : public QueuedRunLoop, public DescriptorWatcher {
public:
    double now() const override;
    void sleep(double seconds) override;
    void runFor(double seconds) override;
    void runUntil(const std::function<bool()>& finished) override;

    void watchDescriptor(int fd, std::function<void()> ready) override;
    void unwatchDescriptor(int fd) override;

private:
    // Waits up to `seconds` (negative: for as long as it takes) for a watched descriptor and
    // serves the ready ones.
    void waitForDescriptors(double seconds);

    std::map<int, std::function<void()>> watched_;
};

} // namespace vexto
