#pragma once

#include <cstdint>

namespace vexto {

// A process's identity in the process list: two words, high and low.
struct ProcessSerialNumber {
    std::uint32_t highLongOfPSN = 0;
    std::uint32_t lowLongOfPSN = 0;

    friend bool operator==(const ProcessSerialNumber&, const ProcessSerialNumber&) = default;
};

// The numbers with a meaning of their own. They are looked at before a number is read as
// anything else.
inline constexpr ProcessSerialNumber kNoProcess{0, 0};
inline constexpr ProcessSerialNumber kSystemProcess{0, 1};
inline constexpr ProcessSerialNumber kCurrentProcess{0, 2};

} // namespace vexto
