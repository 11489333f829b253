#pragma once

#include "platform/linux/TiffHeader.hpp"
#include "ports/ImageDecoder.hpp"

namespace vexto {

// TIFF files through libtiff. Eight-bit RGB and RGBA pictures are read row by row as they are
// stored; any other layout goes through libtiff's RGBA reader, whose premultiplied result is
// turned back into straight alpha. Files over 16 MiB or pictures over 4096 pixels a side are not
// read, and libtiff's messages are kept off standard error.
class TiffImageDecoder final : public ImageDecoder {
public:
    static constexpr std::size_t maximumFileBytes = TiffHeader::maximumFileBytes;
    static constexpr std::uint32_t maximumSide = TiffHeader::maximumSide;

    std::optional<Bitmap> decode(const std::string& path, double scale) const override;
    std::optional<Size> pictureSize(const std::string& path) const override;
};

} // namespace vexto
