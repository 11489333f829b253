#include "toolkit/NotificationCenter.hpp"

namespace vexto {

NotificationCenter& NotificationCenter::defaultCenter()
{
    static NotificationCenter center;
    return center;
}

void NotificationCenter::addObserver(const void* observer, std::string name, const void* object,
                                     Handler handler)
{
    entries_.push_back({observer, std::move(name), object, std::move(handler)});
}

void NotificationCenter::removeObserver(const void* observer)
{
    std::erase_if(entries_, [&](const Entry& e) { return e.observer == observer; });
}

void NotificationCenter::post(std::string_view name, const void* object)
{
    const Notification notification{std::string(name), object};
    // Handlers may add or remove observers: deliver to a snapshot.
    const std::vector<Entry> snapshot = entries_;
    for (const Entry& entry : snapshot) {
        if (entry.name == name && (entry.object == nullptr || entry.object == object)) {
            entry.handler(notification);
        }
    }
}

} // namespace vexto
