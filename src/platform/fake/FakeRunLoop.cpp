#include "platform/fake/FakeRunLoop.hpp"

#include <algorithm>

namespace vexto {

void FakeRunLoop::performAfterDelay(const void* target, std::string selector,
                                    PerformArgument argument, double delay, RunLoopModes modes,
                                    std::function<void()> action)
{
    queue_.add(target, std::move(selector), std::move(argument), now_ + std::max(delay, 0.0),
               modes, std::move(action));
}

void FakeRunLoop::cancelPreviousPerformRequests(const void* target, std::string_view selector,
                                                const PerformArgument& argument)
{
    queue_.cancel(target, selector, argument);
}

void FakeRunLoop::cancelPreviousPerformRequests(const void* target) { queue_.cancel(target); }

void FakeRunLoop::sleep(double seconds)
{
    now_ += std::max(seconds, 0.0);
    slept_ += std::max(seconds, 0.0);
}

void FakeRunLoop::advance(double seconds)
{
    const double end = now_ + std::max(seconds, 0.0);
    for (;;) {
        const auto due = queue_.nextDueTime(mode_);
        if (!due || *due > end) {
            break;
        }
        now_ = std::max(now_, *due);
        if (auto action = queue_.takeDue(now_, mode_)) {
            action();
        }
    }
    now_ = end;
}

} // namespace vexto
