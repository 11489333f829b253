#include "qt/QtRunLoop.hpp"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QThread>

#include <chrono>
#include <cmath>

namespace vexto {

QtRunLoop::QtRunLoop()
{
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, [this] { fireDue(); });
}

double QtRunLoop::now() const
{
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

void QtRunLoop::performAfterDelay(const void* target, std::string selector,
                                  PerformArgument argument, double delay, RunLoopModes modes,
                                  std::function<void()> action)
{
    QueuedRunLoop::performAfterDelay(target, std::move(selector), std::move(argument), delay, modes,
                                     std::move(action));
    reschedule();
}

void QtRunLoop::cancelPreviousPerformRequests(const void* target, std::string_view selector,
                                              const PerformArgument& argument)
{
    QueuedRunLoop::cancelPreviousPerformRequests(target, selector, argument);
    reschedule();
}

void QtRunLoop::cancelPreviousPerformRequests(const void* target)
{
    QueuedRunLoop::cancelPreviousPerformRequests(target);
    reschedule();
}

void QtRunLoop::sleep(double seconds)
{
    if (seconds > 0) {
        QThread::usleep(static_cast<unsigned long>(seconds * 1e6));
    }
}

void QtRunLoop::runFor(double seconds)
{
    QEventLoop loop;
    QTimer::singleShot(static_cast<int>(std::lround(std::max(seconds, 0.0) * 1000)), &loop,
                       &QEventLoop::quit);
    loop.exec();
}

void QtRunLoop::runUntil(const std::function<bool()>& finished)
{
    if (finished()) {
        return;
    }
    QEventLoop loop;
    const auto connection = QObject::connect(QAbstractEventDispatcher::instance(),
                                             &QAbstractEventDispatcher::aboutToBlock, &loop, [&] {
                                                 if (finished()) {
                                                     loop.quit();
                                                 }
                                             });
    loop.exec();
    QObject::disconnect(connection);
}

void QtRunLoop::watchDescriptor(int fd, std::function<void()> ready)
{
    auto notifier = std::make_unique<QSocketNotifier>(fd, QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated,
                     [ready = std::move(ready)] { ready(); });
    notifiers_[fd] = std::move(notifier);
}

void QtRunLoop::unwatchDescriptor(int fd)
{
    const auto found = notifiers_.find(fd);
    if (found != notifiers_.end()) {
        // It may be the notifier whose signal is being served, so it goes later; disabled now,
        // since the descriptor is usually closed next and must not be polled any more.
        found->second->setEnabled(false);
        found->second.release()->deleteLater();
        notifiers_.erase(found);
    }
}

void QtRunLoop::fireDue()
{
    while (auto action = queue_.takeDue(now(), RunLoopMode::Default)) {
        action();
    }
    reschedule();
}

void QtRunLoop::reschedule()
{
    const auto due = queue_.nextDueTime(RunLoopMode::Default);
    if (!due) {
        timer_.stop();
        return;
    }
    const double wait = std::max(*due - now(), 0.0);
    timer_.start(static_cast<int>(std::ceil(wait * 1000)));
}

} // namespace vexto
