#pragma once

#include "foundation/PlistValue.hpp"
#include "foundation/PropertyListCodec.hpp"

#include <optional>

namespace vexto {

// Turns a value into the bytes of a property-list file and proves that they read back as the
// same value before anybody writes them: a file converted onto itself must never be destroyed.
class PlistConverter {
public:
    // None when the value cannot be written in that format or would not read back alike.
    static std::optional<PlistData> convert(const PlistValue& value,
                                            PropertyListCodec::Format format);
};

} // namespace vexto
