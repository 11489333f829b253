#pragma once

#include "foundation/Bitmap.hpp"

#include <optional>
#include <string>

namespace vexto {

// Reads image files (TIFF, PNG) into pixels.
class ImageDecoder {
public:
    virtual ~ImageDecoder() = default;
    virtual std::optional<Bitmap> decode(const std::string& path) const = 0;
};

} // namespace vexto
