#pragma once

#include "foundation/ArchivedObject.hpp"

#include <cstdint>
#include <optional>
#include <span>

namespace vexto {

// Reads a non-keyed archive (typedstream, either byte order) whose root object is a colour or a
// string. Anything malformed, truncated, unknown or nested too deeply gives none.
class TypedStreamUnarchiver {
public:
    static constexpr int maximumNesting = 32;

    static std::optional<ArchivedObject>
    unarchiveObjectWithData(std::span<const std::uint8_t> data);
};

} // namespace vexto
