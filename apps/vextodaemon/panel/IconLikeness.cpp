#include "panel/IconLikeness.hpp"

#include <array>
#include <cstddef>
#include <cstdlib>

namespace vexto {

namespace {

constexpr int grid = 8;
// The mean difference of a channel, out of 255, below which two pictures count as one: room
// for the scaling an icon theme does and the one a program did to its own copy.
constexpr int alike = 28;

bool usable(const Bitmap& bitmap)
{
    return bitmap.width > 0 && bitmap.height > 0 &&
           bitmap.rgba.size() >= std::size_t(bitmap.width) * std::size_t(bitmap.height) * 4;
}

// The mean of each cell's pixels, premultiplied, so that invisible pixels weigh nothing.
std::array<int, grid * grid * 4> cells(const Bitmap& bitmap)
{
    std::array<long, grid * grid * 4> sums{};
    std::array<long, grid * grid> counts{};
    for (int y = 0; y < bitmap.height; ++y) {
        const int row = y * grid / bitmap.height;
        for (int x = 0; x < bitmap.width; ++x) {
            const int cell = row * grid + x * grid / bitmap.width;
            const std::uint8_t* pixel =
                &bitmap.rgba[(std::size_t(y) * std::size_t(bitmap.width) + std::size_t(x)) * 4];
            for (int channel = 0; channel < 3; ++channel) {
                sums[std::size_t(cell * 4 + channel)] += pixel[channel] * pixel[3] / 255;
            }
            sums[std::size_t(cell * 4 + 3)] += pixel[3];
            ++counts[std::size_t(cell)];
        }
    }
    std::array<int, grid * grid * 4> means{};
    for (std::size_t at = 0; at < means.size(); ++at) {
        const long count = counts[at / 4];
        means[at] = count > 0 ? int(sums[at] / count) : 0;
    }
    return means;
}

} // namespace

bool iconsLookAlike(const Bitmap& one, const Bitmap& other)
{
    if (!usable(one) || !usable(other)) {
        return false;
    }
    const auto a = cells(one);
    const auto b = cells(other);
    long difference = 0;
    for (std::size_t at = 0; at < a.size(); ++at) {
        difference += std::abs(a[at] - b[at]);
    }
    return difference < long(alike) * long(a.size());
}

} // namespace vexto
