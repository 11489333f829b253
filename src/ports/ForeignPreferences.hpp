#pragma once

#include "foundation/PlistValue.hpp"

#include <optional>
#include <string>

namespace vexto {

// Other applications' preferences (and the daemon's), read-only, for the current user on any
// host. Each answer reads the domain afresh, so that what another process wrote a moment ago
// is seen.
class ForeignPreferences {
public:
    virtual ~ForeignPreferences() = default;
    virtual std::optional<PlistValue> copyAppValue(const std::string& key,
                                                   const std::string& domain) = 0;
};

} // namespace vexto
