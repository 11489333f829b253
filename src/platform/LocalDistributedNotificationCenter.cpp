#include "platform/LocalDistributedNotificationCenter.hpp"

#include <algorithm>

namespace vexto {

void LocalDistributedNotificationCenter::post(const std::string& name,
                                              const std::optional<std::string>& object)
{
    deliver(name, object);
}

void LocalDistributedNotificationCenter::addObserver(const void* observer, const std::string& name,
                                                     Handler handler, bool /*deliverImmediately*/)
{
    subscriptions_.push_back({observer, name, std::move(handler)});
}

void LocalDistributedNotificationCenter::removeObserver(const void* observer)
{
    std::erase_if(subscriptions_, [&](const Subscription& s) { return s.observer == observer; });
}

void LocalDistributedNotificationCenter::deliver(const std::string& name,
                                                 const std::optional<std::string>& object)
{
    const auto snapshot = subscriptions_; // handlers may subscribe or unsubscribe
    for (const Subscription& subscription : snapshot) {
        if (subscription.name == name) {
            subscription.handler(name, object);
        }
    }
}

std::size_t LocalDistributedNotificationCenter::observerCount(const std::string& name) const
{
    return static_cast<std::size_t>(
        std::count_if(subscriptions_.begin(), subscriptions_.end(),
                      [&](const Subscription& s) { return s.name == name; }));
}

} // namespace vexto
