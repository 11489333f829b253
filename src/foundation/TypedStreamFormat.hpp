#pragma once

#include <cstdint>
#include <string_view>

namespace vexto::typedstream {

// Bytes of the non-keyed archive format shared by the archiver and the unarchiver.
inline constexpr std::uint8_t streamerVersion = 4;
inline constexpr std::string_view littleEndianSignature = "streamtyped";
inline constexpr std::string_view bigEndianSignature = "typedstream";
inline constexpr std::int64_t systemVersion = 1000;

inline constexpr std::uint8_t tagInt16 = 0x81;
inline constexpr std::uint8_t tagInt32 = 0x82;
inline constexpr std::uint8_t tagReal = 0x83;
inline constexpr std::uint8_t tagNew = 0x84;
inline constexpr std::uint8_t tagNil = 0x85;
inline constexpr std::uint8_t tagEndOfObject = 0x86;
// Head bytes from 0x80 to 0x91 are tags; the rest are literal values -110..127.
inline constexpr std::int64_t smallestLiteral = -110;
inline constexpr std::int64_t largestLiteral = 127;
// Reference n is written as the integer n + firstReference.
inline constexpr std::int64_t firstReference = -110;

// The colour kinds stored after the "c" group.
enum class ColorKind : std::uint8_t {
    CalibratedRGB = 1,
    DeviceRGB = 2,
    CalibratedWhite = 3,
    DeviceWhite = 4,
    DeviceCMYK = 5,
    Catalog = 6,
};

struct ArchivedClass {
    std::string_view name;
    std::int64_t version;
};
inline constexpr ArchivedClass colorClass{"NSColor", 0};
inline constexpr ArchivedClass stringClass{"NSString", 1};
inline constexpr ArchivedClass mutableStringClass{"NSMutableString", 1};
inline constexpr ArchivedClass rootClass{"NSObject", 0};

} // namespace vexto::typedstream
