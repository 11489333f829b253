#include "platform/QueuedRunLoop.hpp"

#include <algorithm>

namespace vexto {

void QueuedRunLoop::performAfterDelay(const void* target, std::string selector,
                                      PerformArgument argument, double delay, RunLoopModes modes,
                                      std::function<void()> action)
{
    queue_.add(target, std::move(selector), std::move(argument), now() + std::max(delay, 0.0),
               modes, std::move(action));
}

void QueuedRunLoop::cancelPreviousPerformRequests(const void* target, std::string_view selector,
                                                  const PerformArgument& argument)
{
    queue_.cancel(target, selector, argument);
}

void QueuedRunLoop::cancelPreviousPerformRequests(const void* target)
{
    queue_.cancel(target);
}

} // namespace vexto
