#pragma once

#include "foundation/PlistValue.hpp"

#include <string>

namespace vexto {

// A readable tree of a property list for people: one entry a line, keys in order, and data that
// holds an archived colour shown as the colour.
class PlistPrinter {
public:
    static std::string print(const PlistValue& value);
};

} // namespace vexto
