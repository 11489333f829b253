#pragma once

#include <cstdint>
#include <vector>

namespace vexto {

// Decoded pixels: rows from the top, four bytes a pixel (red, green, blue, alpha), not
// premultiplied.
struct Bitmap {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba;
};

} // namespace vexto
