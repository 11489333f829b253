// The images drawn into the built bundle, read back as the pane reads them.
#include "platform/linux/TiffHeader.hpp"
#include "platform/linux/TiffImageDecoder.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

namespace vexto {
namespace {

struct Expected {
    const char* name;
    int width;
    int height;
};

TEST(PaneImagesTest, EveryImageHasItsSizeAtBothScalesAndStraightAlpha)
{
    const std::string resources =
        std::string(std::getenv("VEXTO_PANE_BUNDLE")) + "/Contents/Resources/";
    const TiffImageDecoder decoder;
    for (const Expected& image :
         {Expected{"KRLinkArrow.tiff", 11, 11}, Expected{"KRHotKeyDeleteOn.tiff", 14, 14},
          Expected{"KRHotKeyDeleteOff.tiff", 14, 14}, Expected{"KRVXUserLayout.tiff", 16, 16},
          Expected{"KRVXSmallIcon.tiff", 16, 16}}) {
        SCOPED_TRACE(image.name);
        const auto small = decoder.decode(resources + image.name, 1);
        const auto large = decoder.decode(resources + image.name, 2);
        ASSERT_TRUE(small && large);
        // What the layout learns from the header alone is what is drawn.
        const Size size{double(image.width), double(image.height)};
        EXPECT_EQ(TiffHeader::firstPictureSize(resources + image.name), size);
        EXPECT_EQ(decoder.pictureSize(resources + image.name), size);
        EXPECT_EQ(small->width, image.width);
        EXPECT_EQ(small->height, image.height);
        EXPECT_EQ(large->width, 2 * image.width);
        EXPECT_EQ(large->height, 2 * image.height);
        int transparent = 0;
        int opaque = 0;
        for (std::size_t i = 3; i < large->rgba.size(); i += 4) {
            transparent += large->rgba[i] == 0;
            opaque += large->rgba[i] == 255;
        }
        EXPECT_GT(transparent, 0);
        EXPECT_GT(opaque, 0);
    }
    // The clear button's disc is mid grey with a white cross: its soft edge keeps the grey, as
    // straight alpha does (premultiplied, it would darken toward black).
    const auto disc = decoder.decode(resources + "KRHotKeyDeleteOn.tiff", 2);
    ASSERT_TRUE(disc);
    for (std::size_t i = 0; i + 3 < disc->rgba.size(); i += 4) {
        if (disc->rgba[i + 3] > 0 && disc->rgba[i + 3] < 255) {
            EXPECT_GE(disc->rgba[i], 120) << "pixel " << i / 4;
        }
    }
}

} // namespace
} // namespace vexto
