#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexto {

// The base64 alphabet of property lists (RFC 4648, with "=" padding).
class Base64 {
public:
    static std::string encode(std::span<const std::uint8_t> bytes);
    // Decodes text that may hold white space between the characters, as property-list data
    // does; none when a character outside the alphabet appears or the padding is wrong.
    static std::optional<std::vector<std::uint8_t>> decode(std::string_view text);
};

} // namespace vexto
