#pragma once

#include "foundation/Bitmap.hpp"
#include "foundation/Size.hpp"

#include <optional>
#include <string>

namespace vexto {

// Reads image files into pixels with straight (not premultiplied) alpha.
class ImageDecoder {
public:
    virtual ~ImageDecoder() = default;
    // A file may hold one picture for each scale (1x, 2x): `scale` picks the one whose width is
    // nearest the first's times the scale. None when the file cannot be read as an image.
    virtual std::optional<Bitmap> decode(const std::string& path, double scale) const = 0;
    // The first picture's size in pixels, as cheaply as the format allows; none when the file
    // cannot be read as an image.
    virtual std::optional<Size> pictureSize(const std::string& path) const = 0;
};

} // namespace vexto
