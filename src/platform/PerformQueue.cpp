#include "platform/PerformQueue.hpp"

#include <algorithm>

namespace vexto {

void PerformQueue::add(const void* target, std::string selector, PerformArgument argument,
                       double dueTime, RunLoopModes modes, std::function<void()> action)
{
    Request request{target, std::move(selector), std::move(argument), dueTime, nextSequence_++,
                    modes,  std::move(action)};
    const auto position = std::find_if(requests_.begin(), requests_.end(),
                                       [&](const Request& r) { return r.dueTime > dueTime; });
    requests_.insert(position, std::move(request));
}

void PerformQueue::cancel(const void* target, std::string_view selector,
                          const PerformArgument& argument)
{
    requests_.remove_if([&](const Request& r) {
        return r.target == target && r.selector == selector && r.argument == argument;
    });
}

void PerformQueue::cancel(const void* target)
{
    requests_.remove_if([&](const Request& r) { return r.target == target; });
}

std::list<PerformQueue::Request>::iterator PerformQueue::firstFor(RunLoopMode mode)
{
    return std::find_if(requests_.begin(), requests_.end(),
                        [&](const Request& r) { return r.modes.contains(mode); });
}

std::optional<double> PerformQueue::nextDueTime(RunLoopMode mode) const
{
    const auto found = std::find_if(requests_.begin(), requests_.end(),
                                    [&](const Request& r) { return r.modes.contains(mode); });
    if (found == requests_.end()) {
        return std::nullopt;
    }
    return found->dueTime;
}

std::function<void()> PerformQueue::takeDue(double time, RunLoopMode mode)
{
    const auto found = firstFor(mode);
    if (found == requests_.end() || found->dueTime > time) {
        return nullptr;
    }
    std::function<void()> action = std::move(found->action);
    requests_.erase(found);
    return action;
}

} // namespace vexto
