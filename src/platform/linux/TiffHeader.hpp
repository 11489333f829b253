#pragma once

#include "foundation/Size.hpp"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace vexto {

// The size of a TIFF file's first picture, read from its first directory without decoding
// anything, so that laying out an image does not need the TIFF library and its codecs. Only
// classic TIFF (either byte order) with the width and length among the directory's first
// entries is read; anything else gives none, and is left to the full decoder. The bounds are the
// decoder's: a file or a picture it would not read has no size here either.
class TiffHeader {
public:
    static constexpr std::size_t entriesRead = 16;
    static constexpr std::size_t maximumFileBytes = 16 * 1024 * 1024;
    static constexpr std::uint32_t maximumSide = 4096;

    static std::optional<Size> firstPictureSize(const std::string& path);
    // The same from the whole file's bytes.
    static std::optional<Size> firstPictureSize(std::span<const std::uint8_t> bytes);
};

} // namespace vexto
