#pragma once

#include "foundation/PlistValue.hpp"

#include <optional>
#include <string>

namespace vexto {

class ForeignPreferences;

// A value from another application's preferences, read afresh; none when either name is empty.
std::optional<PlistValue> objectForKey(ForeignPreferences& preferences, const std::string& key,
                                       const std::string& bundleIdentifier);

// Whether the system's Spaces are on, and, when asked for, which space each application is bound
// to: lower-cased bundle identifier to 1 (every space) or 2 + the space's place in the list.
// The bindings are none when there are none or they cannot be read.
bool areSpacesEnabledWithApplicationBindings(ForeignPreferences& preferences,
                                             std::optional<PlistDictionary>* bindings);
bool areSpacesEnabled(ForeignPreferences& preferences);

} // namespace vexto
