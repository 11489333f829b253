#pragma once

#include "ports/DistributedNotificationCenter.hpp"

#include <cstddef>
#include <vector>

namespace vexto {

// Delivers notifications within this process only: for hosts without a session bus, and the base
// of the test fake.
class LocalDistributedNotificationCenter : public DistributedNotificationCenter {
public:
    void post(const std::string& name, const std::optional<std::string>& object) override;
    void addObserver(const void* observer, const std::string& name, Handler handler,
                     bool deliverImmediately) override;
    void removeObserver(const void* observer) override;

    // Delivers to the observers of the name, as if another process had posted it.
    void deliver(const std::string& name, const std::optional<std::string>& object = std::nullopt);
    std::size_t observerCount(const std::string& name) const;

private:
    struct Subscription {
        const void* observer;
        std::string name;
        Handler handler;
    };
    std::vector<Subscription> subscriptions_;
};

} // namespace vexto
