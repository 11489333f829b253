#pragma once

#include "foundation/PlistValue.hpp"

#include <optional>
#include <string>

namespace vexto {

// Writes the XML property-list format straight from the values, in the platform's published
// layout: the XML declaration and DOCTYPE, tab indentation, dictionary keys in UTF-16 order,
// <true/> and <false/>, reals with 17 significant digits, dates in UTC to the second, and base64
// data in lines of 76 characters less 8 for each level of indentation (at most 8 levels).
// Saving settings this way builds no intermediate tree and copies no value.
class XmlPropertyListWriter {
public:
    // None when the value nests deeper than `maximumNesting` arrays and dictionaries.
    static std::optional<std::string> write(const PlistValue& value, int maximumNesting);
    // The same for a dictionary as the root, without wrapping (copying) it in a value first.
    static std::optional<std::string> write(const PlistDictionary& root, int maximumNesting);
};

} // namespace vexto
