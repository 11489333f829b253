#pragma once

#include "platform/DescriptorWatcher.hpp"
#include "platform/QueuedRunLoop.hpp"

#include <QSocketNotifier>
#include <QTimer>

#include <map>
#include <memory>

namespace vexto {

// The run loop of a Qt host: delayed performs fire from Qt's own event loop, through one timer
// set to the next due time. Qt has no tracking or modal-panel modes of its own, so everything
// fires in the default mode.
class QtRunLoop final : public QueuedRunLoop, public DescriptorWatcher {
public:
    QtRunLoop();

    double now() const override;
    void performAfterDelay(const void* target, std::string selector, PerformArgument argument,
                           double delay, RunLoopModes modes, std::function<void()> action) override;
    void cancelPreviousPerformRequests(const void* target, std::string_view selector,
                                       const PerformArgument& argument) override;
    void cancelPreviousPerformRequests(const void* target) override;
    void sleep(double seconds) override;
    // Runs Qt's event loop for that long.
    void runFor(double seconds) override;
    // Asks each time Qt's loop is about to wait, so that it wakes only for what it serves.
    void runUntil(const std::function<bool()>& finished) override;

    // Watched through Qt's own event loop, one socket notifier per descriptor.
    void watchDescriptor(int fd, std::function<void()> ready) override;
    void unwatchDescriptor(int fd) override;

private:
    void fireDue();
    void reschedule();

    QTimer timer_;
    std::map<int, std::unique_ptr<QSocketNotifier>> notifiers_;
};

} // namespace vexto
