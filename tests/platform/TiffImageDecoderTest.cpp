#include "platform/linux/TiffImageDecoder.hpp"

#include "../foundation/TestSupport.hpp"
#include "platform/linux/TiffHeader.hpp"

#include <gtest/gtest.h>

#include <tiffio.h>
#include <vector>

namespace vexto {
namespace {

struct Picture {
    std::uint32_t width;
    std::uint32_t height;
    std::vector<std::uint8_t> samples; // rows from the top, `channels` bytes a pixel
    std::uint16_t channels = 4;
    std::uint16_t extraSample = EXTRASAMPLE_UNASSALPHA;
    std::uint16_t photometric = PHOTOMETRIC_RGB;
};

// Writes one directory a picture, LZW-compressed, as the resource generator does; `mode` "wb"
// writes big-endian.
void writeTiff(const std::string& path, const std::vector<Picture>& pictures,
               const char* mode = "w")
{
    TIFF* tiff = TIFFOpen(path.c_str(), mode);
    ASSERT_NE(tiff, nullptr);
    for (const Picture& picture : pictures) {
        TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, picture.width);
        TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, picture.height);
        TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, picture.channels);
        TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
        TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, picture.photometric);
        TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
        if (picture.channels == 4 || picture.channels == 2) {
            const std::uint16_t extra[] = {picture.extraSample};
            TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, extra);
        }
        for (std::uint32_t y = 0; y < picture.height; ++y) {
            std::vector<std::uint8_t> row(
                picture.samples.begin() + y * picture.width * picture.channels,
                picture.samples.begin() + (y + 1) * picture.width * picture.channels);
            TIFFWriteScanline(tiff, row.data(), y, 0);
        }
        TIFFWriteDirectory(tiff);
    }
    TIFFClose(tiff);
}

std::vector<std::uint8_t> repeated(std::vector<std::uint8_t> pixel, std::size_t count)
{
    std::vector<std::uint8_t> out;
    for (std::size_t i = 0; i < count; ++i) {
        out.insert(out.end(), pixel.begin(), pixel.end());
    }
    return out;
}

class TiffImageDecoderTest : public ::testing::Test {
protected:
    test::TemporaryFolder folder;
    TiffImageDecoder decoder;
    std::string path = folder.file("image.tiff");
};

TEST_F(TiffImageDecoderTest, PixelsComeBackWithStraightAlphaWhateverTheFileHolds)
{
    // Straight alpha stored as it is: half-transparent red stays full red.
    writeTiff(path, {{2, 1, {255, 0, 0, 128, 10, 20, 30, 0}}});
    auto bitmap = decoder.decode(path, 1);
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->width, 2);
    EXPECT_EQ(bitmap->rgba, (std::vector<std::uint8_t>{255, 0, 0, 128, 10, 20, 30, 0}));

    // Premultiplied alpha is turned back.
    writeTiff(path, {{1, 1, {128, 0, 0, 128}, 4, EXTRASAMPLE_ASSOCALPHA}});
    EXPECT_EQ(decoder.decode(path, 1)->rgba, (std::vector<std::uint8_t>{255, 0, 0, 128}));

    // A layout read through libtiff's converter (grey with alpha) comes out straight as well.
    writeTiff(path, {{1, 1, {255, 128}, 2, EXTRASAMPLE_UNASSALPHA, PHOTOMETRIC_MINISBLACK}});
    EXPECT_EQ(decoder.decode(path, 1)->rgba, (std::vector<std::uint8_t>{255, 255, 255, 128}));

    // No alpha: opaque.
    writeTiff(path, {{1, 1, {1, 2, 3}, 3}});
    EXPECT_EQ(decoder.decode(path, 1)->rgba, (std::vector<std::uint8_t>{1, 2, 3, 255}));
}

TEST_F(TiffImageDecoderTest, TheScalePicksThePictureOfItsSize)
{
    writeTiff(path,
              {{4, 4, repeated({0, 0, 255, 255}, 16)}, {8, 8, repeated({0, 255, 0, 255}, 64)}});
    const auto small = decoder.decode(path, 1);
    const auto large = decoder.decode(path, 2);
    ASSERT_TRUE(small && large);
    EXPECT_EQ(small->width, 4);
    EXPECT_EQ(small->rgba[2], 255);
    EXPECT_EQ(large->width, 8);
    EXPECT_EQ(large->height, 8);
    EXPECT_EQ(large->rgba[1], 255);
}

TEST_F(TiffImageDecoderTest, WhatIsNotAUsablePictureGivesNone)
{
    EXPECT_FALSE(decoder.decode(folder.file("missing.tiff"), 1));
    test::writeText(path, "not a picture");
    EXPECT_FALSE(decoder.decode(path, 1));
    writeTiff(path, {{16, 16, repeated({1, 2, 3, 4}, 256)}});
    const std::string whole = test::readText(path);
    for (std::size_t length : {std::size_t{8}, whole.size() / 2, whole.size() - 10}) {
        test::writeText(path, std::string_view(whole).substr(0, length));
        decoder.decode(path, 1); // refused or read, never a crash
    }
    // A picture claimed larger than the bound is not read at all.
    writeTiff(path, {{5000, 1, repeated({0, 0, 0, 0}, 5000)}});
    EXPECT_FALSE(decoder.decode(path, 1));
}

TEST_F(TiffImageDecoderTest, TheHeaderAloneGivesTheFirstPicturesSizeInEitherByteOrder)
{
    for (const char* mode : {"w", "wb"}) {
        SCOPED_TRACE(mode);
        writeTiff(path,
                  {{3, 5, repeated({0, 0, 255, 255}, 15)}, {6, 10, repeated({0, 0, 0, 0}, 60)}},
                  mode);
        EXPECT_EQ(TiffHeader::firstPictureSize(path), (Size{3, 5}));
        EXPECT_EQ(decoder.pictureSize(path), (Size{3, 5}));
    }
    // A picture larger than the decoder would read has no size either.
    writeTiff(path, {{5000, 1, repeated({0, 0, 0, 0}, 5000)}});
    EXPECT_FALSE(TiffHeader::firstPictureSize(path));
    EXPECT_FALSE(decoder.pictureSize(path));
}

TEST_F(TiffImageDecoderTest, AHeaderThatCannotBeTrustedGivesNoSize)
{
    EXPECT_FALSE(TiffHeader::firstPictureSize(folder.file("missing.tiff")));
    test::writeText(path, "not a picture");
    EXPECT_FALSE(TiffHeader::firstPictureSize(path));
    // The directory said to lie beyond the end of the file, or at its very start.
    for (const std::string_view header :
         {std::string_view("II*\0\xff\xff\0\0", 8), std::string_view("II*\0\0\0\0\0", 8)}) {
        test::writeText(path, header);
        EXPECT_FALSE(TiffHeader::firstPictureSize(path));
    }
    // Cut anywhere, a file gives its true size or none.
    writeTiff(path, {{16, 9, repeated({1, 2, 3, 4}, 144)}});
    const std::string whole = test::readText(path);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(whole.data());
        const auto size = TiffHeader::firstPictureSize(std::span(bytes, length));
        EXPECT_TRUE(!size || *size == (Size{16, 9})) << "cut at " << length;
    }
}

} // namespace
} // namespace vexto
