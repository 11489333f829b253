#pragma once

#include "platform/DistributedNotificationCenter.hpp"

#include <cstddef>
#include <vector>

namespace vexto {

// Delivers within the process and remembers what was posted, for tests. `deliver` plays the
// daemon's part.
class FakeDistributedNotificationCenter final : public DistributedNotificationCenter {
public:
    struct Posted {
        std::string name;
        std::optional<std::string> object;
        friend bool operator==(const Posted&, const Posted&) = default;
    };

    void post(const std::string& name, const std::optional<std::string>& object) override;
    void addObserver(const void* observer, const std::string& name, Handler handler,
                     bool deliverImmediately) override;
    void removeObserver(const void* observer) override;

    // Delivers to the observers without recording a post.
    void deliver(const std::string& name, const std::optional<std::string>& object = std::nullopt);

    const std::vector<Posted>& posted() const { return posted_; }
    void clearPosted() { posted_.clear(); }
    // How many subscriptions there are for the name.
    std::size_t observerCount(const std::string& name) const;

private:
    struct Subscription {
        const void* observer;
        std::string name;
        Handler handler;
        bool deliverImmediately;
    };
    std::vector<Subscription> subscriptions_;
    std::vector<Posted> posted_;
};

} // namespace vexto
