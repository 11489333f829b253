#pragma once

#include "ports/ImageDecoder.hpp"

namespace vexto {

// Image files for a host that may never draw one: sizes come from the file's header where it is
// a TIFF header that can be read without the TIFF library, and pixels from the desktop module,
// loaded when an image is first drawn. Without the module there are no pixels.
class DeferredImageDecoder final : public ImageDecoder {
public:
    std::optional<Bitmap> decode(const std::string& path, double scale) const override;
    std::optional<Size> pictureSize(const std::string& path) const override;
};

} // namespace vexto
