// Any 32-bit values as a window's _NET_WM_ICON, as a hostile client may publish them: the picture
// taken is whole, within the size bound, and one that the values really hold.
#include "xserver/NetWmIcon.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

using namespace vexto;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 1) {
        return 0;
    }
    const int preferred = data[0];
    std::vector<std::uint32_t> values((size - 1) / 4);
    if (!values.empty()) {
        std::memcpy(values.data(), data + 1, values.size() * 4);
    }
    const auto icon = NetWmIcon::nearest(values, preferred);
    if (!icon) {
        return 0;
    }
    const auto width = static_cast<std::size_t>(icon->width);
    const auto height = static_cast<std::size_t>(icon->height);
    if (width == 0 || height == 0 || width > NetWmIcon::largestSide ||
        height > NetWmIcon::largestSide || icon->rgba.size() != width * height * 4 ||
        width * height + 2 > values.size()) {
        std::fprintf(stderr, "an icon that the values do not hold\n");
        std::abort();
    }
    return 0;
}
