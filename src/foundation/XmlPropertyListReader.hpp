#pragma once

#include "foundation/PlistValue.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vexto {

// Reads the XML property-list format with an explicit stack instead of recursion, so that its
// bounds hold whatever the input: nesting, the number of values, and text that must be valid
// UTF-8 without NUL characters. libplist's XML reader recurses once per level and accepts any
// bytes as text, which a damaged or hostile settings file turns into a crash or into a file that
// can no longer be written back.
class XmlPropertyListReader {
public:
    struct Limits {
        int maximumNesting = 512;           // arrays and dictionaries inside each other
        std::size_t maximumValues = 100000; // every value, keys not counted
    };
    struct Result {
        std::optional<PlistValue> value;
        std::string error; // empty when a value was read
    };

    static Result read(std::string_view text, const Limits& limits);
};

} // namespace vexto
