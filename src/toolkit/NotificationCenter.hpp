#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vexto {

// The process's own notification centre: the toolkit posts window and application changes here
// (e.g. "NSWindowDidBecomeMainNotification" with the window as object).
class NotificationCenter {
public:
    struct Notification {
        std::string name;
        const void* object;
    };
    using Handler = std::function<void(const Notification&)>;

    static NotificationCenter& defaultCenter();

    // `object` null: notifications of that name from any sender.
    void addObserver(const void* observer, std::string name, const void* object, Handler handler);
    void removeObserver(const void* observer);
    void post(std::string_view name, const void* object);

    std::size_t observerCount() const { return entries_.size(); }

private:
    struct Entry {
        const void* observer;
        std::string name;
        const void* object;
        Handler handler;
    };
    std::vector<Entry> entries_;
};

} // namespace vexto
