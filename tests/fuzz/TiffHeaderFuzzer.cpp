// Any bytes as the start of an image file: a size read from them lies within the decoder's bounds.
#include "platform/linux/TiffHeader.hpp"

#include <cstdio>
#include <cstdlib>

using namespace vexto;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto picture = TiffHeader::firstPictureSize(std::span(data, size));
    const auto inBounds = [](double side) {
        return side >= 1 && side <= TiffHeader::maximumSide;
    };
    if (picture && (!inBounds(picture->width) || !inBounds(picture->height))) {
        std::fputs("a picture size beyond the bounds\n", stderr);
        std::abort();
    }
    return 0;
}
