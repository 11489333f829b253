#pragma once

#include <cmath>
#include <concepts>
#include <limits>

namespace vexto {

// A real turned into an integer without undefined behaviour: truncated toward zero, clamped to
// the integer's range, and 0 for NaN. Settings files may hold any real at all.
template <std::integral Integer> Integer saturatingCast(double value)
{
    if (std::isnan(value)) {
        return 0;
    }
    constexpr auto lowest = static_cast<double>(std::numeric_limits<Integer>::lowest());
    // The largest value converted to double rounds up to a power of two: compare with >=.
    constexpr auto beyondHighest = static_cast<double>(std::numeric_limits<Integer>::max());
    if (value <= lowest) {
        return std::numeric_limits<Integer>::lowest();
    }
    if (value >= beyondHighest) {
        return std::numeric_limits<Integer>::max();
    }
    return static_cast<Integer>(value);
}

} // namespace vexto
