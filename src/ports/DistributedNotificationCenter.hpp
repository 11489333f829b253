#pragma once

#include <functional>
#include <optional>
#include <string>

namespace vexto {

// The system-wide notification centre shared with the daemon: a name and, at most, an object
// string travel; no user info.
class DistributedNotificationCenter {
public:
    using Handler =
        std::function<void(const std::string& name, const std::optional<std::string>& object)>;

    virtual ~DistributedNotificationCenter() = default;
    virtual void post(const std::string& name, const std::optional<std::string>& object) = 0;
    // From any sender. With `deliverImmediately`, also while the host is in the background.
    virtual void addObserver(const void* observer, const std::string& name, Handler handler,
                             bool deliverImmediately) = 0;
    // Every subscription of the observer.
    virtual void removeObserver(const void* observer) = 0;
};

} // namespace vexto
