#include "xserver/NetWmIcon.hpp"

namespace vexto {

std::optional<Bitmap> NetWmIcon::nearest(std::span<const std::uint32_t> values, int preferred)
{
    std::optional<std::size_t> best;
    std::uint32_t bestSide = 0;
    const auto better = [&](std::uint32_t side) {
        if (!best) {
            return true;
        }
        const auto wanted = static_cast<std::uint32_t>(preferred > 0 ? preferred : 0);
        const bool fits = side >= wanted;
        const bool bestFits = bestSide >= wanted;
        if (fits != bestFits) {
            return fits;
        }
        return fits ? side < bestSide : side > bestSide;
    };
    std::size_t at = 0;
    while (values.size() - at >= 2) {
        const std::uint32_t width = values[at];
        const std::uint32_t height = values[at + 1];
        if (width == 0 || height == 0 || width > largestSide || height > largestSide) {
            break;
        }
        const std::size_t pixels = std::size_t(width) * height;
        if (values.size() - at - 2 < pixels) {
            break; // cut short: what follows is no picture
        }
        const std::uint32_t side = width > height ? width : height;
        if (better(side)) {
            best = at;
            bestSide = side;
        }
        at += 2 + pixels;
    }
    if (!best) {
        return std::nullopt;
    }
    Bitmap bitmap;
    bitmap.width = static_cast<int>(values[*best]);
    bitmap.height = static_cast<int>(values[*best + 1]);
    const std::size_t count = std::size_t(bitmap.width) * std::size_t(bitmap.height);
    bitmap.rgba.reserve(count * 4);
    for (const std::uint32_t pixel : values.subspan(*best + 2, count)) {
        bitmap.rgba.push_back(static_cast<std::uint8_t>(pixel >> 16));
        bitmap.rgba.push_back(static_cast<std::uint8_t>(pixel >> 8));
        bitmap.rgba.push_back(static_cast<std::uint8_t>(pixel));
        bitmap.rgba.push_back(static_cast<std::uint8_t>(pixel >> 24));
    }
    return bitmap;
}

} // namespace vexto
