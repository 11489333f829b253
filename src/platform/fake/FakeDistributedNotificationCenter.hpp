#pragma once

#include "platform/LocalDistributedNotificationCenter.hpp"

#include <vector>

namespace vexto {

// Delivers within the process and remembers what was posted, for tests. `deliver` plays the
// daemon's part.
class FakeDistributedNotificationCenter final : public LocalDistributedNotificationCenter {
public:
    struct Posted {
        std::string name;
        std::optional<std::string> object;
        friend bool operator==(const Posted&, const Posted&) = default;
    };

    void post(const std::string& name, const std::optional<std::string>& object) override
    {
        posted_.push_back({name, object});
        LocalDistributedNotificationCenter::post(name, object);
    }

    const std::vector<Posted>& posted() const { return posted_; }
    void clearPosted() { posted_.clear(); }

private:
    std::vector<Posted> posted_;
};

} // namespace vexto
