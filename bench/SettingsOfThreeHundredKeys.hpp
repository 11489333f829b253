#pragma once

#include "foundation/PlistValue.hpp"

namespace vexto::bench {

// 300 keys like the pane's: booleans, integers, reals, exception lists, hot-key tables and
// 20 archived colours; about 30 KB as XML.
PlistDictionary settingsOfThreeHundredKeys();

} // namespace vexto::bench
