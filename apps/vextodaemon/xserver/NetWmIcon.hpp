#pragma once

#include "foundation/Bitmap.hpp"

#include <cstdint>
#include <optional>
#include <span>

namespace vexto {

// A window's own icon as it publishes it in _NET_WM_ICON: a run of pictures, each its width and
// height followed by that many pixels, 0xAARRGGBB each with straight alpha.
class NetWmIcon {
public:
    // The most pixels a side may have; pictures claiming more end the reading.
    static constexpr std::uint32_t largestSide = 1024;

    // The picture nearest `preferred` pixels a side: the smallest that is at least that big,
    // else the biggest. None when the values hold no whole picture.
    static std::optional<Bitmap> nearest(std::span<const std::uint32_t> values, int preferred);
};

} // namespace vexto
