#include "toolkit/Image.hpp"

#include "ports/ImageDecoder.hpp"

#include <gtest/gtest.h>

namespace vexto {
namespace {

// Sizes every file as 3 by 2 and counts the pictures it decodes; "broken" files have a size
// but no pixels, "missing" ones neither.
class CountingDecoder final : public ImageDecoder {
public:
    std::optional<Bitmap> decode(const std::string& path, double) const override
    {
        ++decoded;
        if (path == "broken") {
            return std::nullopt;
        }
        return Bitmap{3, 2, std::vector<std::uint8_t>(3 * 2 * 4, 255)};
    }
    std::optional<Size> pictureSize(const std::string& path) const override
    {
        return path == "missing" ? std::nullopt : std::optional<Size>(Size{3, 2});
    }
    mutable int decoded = 0;
};

TEST(ImageTest, AFileIsMeasuredAtOnceAndDecodedOnceWhenFirstDrawn)
{
    const CountingDecoder decoder;
    const auto image = Image::contentsOfFile("arrow", decoder);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->size(), (Size{3, 2}));
    EXPECT_EQ(decoder.decoded, 0) << "nothing drawn, nothing decoded";
    ASSERT_NE(image->bitmap(), nullptr);
    EXPECT_EQ(image->bitmap()->width, 3);
    EXPECT_EQ(decoder.decoded, 1);

    EXPECT_EQ(Image::contentsOfFile("missing", decoder), nullptr);
    const auto broken = Image::contentsOfFile("broken", decoder);
    ASSERT_NE(broken, nullptr);
    EXPECT_EQ(broken->bitmap(), nullptr);
    EXPECT_EQ(broken->bitmap(), nullptr);
    EXPECT_EQ(decoder.decoded, 2) << "a file that cannot be decoded is not tried again";
}

} // namespace
} // namespace vexto
