#include "platform/linux/TiffImageDecoder.hpp"

#include "foundation/FileSystem.hpp"

#include <cmath>
#include <memory>
#include <tiffio.h>
#include <utility>
#include <vector>

namespace vexto {

namespace {

struct TiffCloser {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, TiffCloser>;

void silenceLibtiff()
{
    static const bool silenced = [] {
        TIFFSetErrorHandler(nullptr);
        TIFFSetWarningHandler(nullptr);
        return true;
    }();
    (void)silenced;
}

std::uint32_t field(TIFF* tiff, ttag_t tag)
{
    std::uint32_t value = 0;
    TIFFGetField(tiff, tag, &value);
    return value;
}

std::uint16_t shortField(TIFF* tiff, ttag_t tag)
{
    std::uint16_t value = 0;
    TIFFGetFieldDefaulted(tiff, tag, &value);
    return value;
}

// The directory whose width is nearest the first's times `scale`.
bool chooseDirectory(TIFF* tiff, double scale)
{
    const double wanted = static_cast<double>(field(tiff, TIFFTAG_IMAGEWIDTH)) * scale;
    tdir_t best = 0;
    double bestDistance = HUGE_VAL;
    for (tdir_t directory = 0; directory < 64 && TIFFSetDirectory(tiff, directory); ++directory) {
        const double distance =
            std::fabs(static_cast<double>(field(tiff, TIFFTAG_IMAGEWIDTH)) - wanted);
        if (distance < bestDistance) {
            best = directory;
            bestDistance = distance;
        }
    }
    return TIFFSetDirectory(tiff, best) != 0;
}

// Alpha stored with each sample: straight when the file says the extra sample is unassociated.
bool alphaIsStraight(TIFF* tiff)
{
    std::uint16_t count = 0;
    std::uint16_t* kinds = nullptr;
    return TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &count, &kinds) == 1 && count > 0 &&
           kinds[0] == EXTRASAMPLE_UNASSALPHA;
}

void unpremultiply(Bitmap& bitmap)
{
    for (std::size_t i = 0; i + 3 < bitmap.rgba.size(); i += 4) {
        const unsigned alpha = bitmap.rgba[i + 3];
        if (alpha == 0 || alpha == 255) {
            continue;
        }
        for (std::size_t c = 0; c < 3; ++c) {
            const unsigned straight = (bitmap.rgba[i + c] * 255u + alpha / 2) / alpha;
            bitmap.rgba[i + c] = static_cast<std::uint8_t>(std::min(straight, 255u));
        }
    }
}

// Eight-bit RGB or RGBA in one plane: the rows as they are.
std::optional<Bitmap> readScanlines(TIFF* tiff, Bitmap bitmap, int samples)
{
    std::vector<std::uint8_t> row(static_cast<std::size_t>(TIFFScanlineSize(tiff)));
    if (row.size() < static_cast<std::size_t>(bitmap.width) * static_cast<std::size_t>(samples)) {
        return std::nullopt;
    }
    const bool premultiplied = samples == 4 && !alphaIsStraight(tiff);
    for (int y = 0; y < bitmap.height; ++y) {
        if (TIFFReadScanline(tiff, row.data(), static_cast<std::uint32_t>(y), 0) < 0) {
            return std::nullopt;
        }
        std::uint8_t* out = bitmap.rgba.data() + static_cast<std::size_t>(y) * bitmap.width * 4;
        for (int x = 0; x < bitmap.width; ++x) {
            const std::uint8_t* in = row.data() + static_cast<std::size_t>(x) * samples;
            out[x * 4 + 0] = in[0];
            out[x * 4 + 1] = in[1];
            out[x * 4 + 2] = in[2];
            out[x * 4 + 3] = samples == 4 ? in[3] : 255;
        }
    }
    if (premultiplied) {
        unpremultiply(bitmap);
    }
    return bitmap;
}

// Any other layout: libtiff converts it, premultiplying what has alpha.
std::optional<Bitmap> readConverted(TIFF* tiff, Bitmap bitmap)
{
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(bitmap.width) * bitmap.height);
    if (!TIFFReadRGBAImageOriented(tiff, static_cast<std::uint32_t>(bitmap.width),
                                   static_cast<std::uint32_t>(bitmap.height), pixels.data(),
                                   ORIENTATION_TOPLEFT, 0)) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        bitmap.rgba[i * 4 + 0] = static_cast<std::uint8_t>(TIFFGetR(pixels[i]));
        bitmap.rgba[i * 4 + 1] = static_cast<std::uint8_t>(TIFFGetG(pixels[i]));
        bitmap.rgba[i * 4 + 2] = static_cast<std::uint8_t>(TIFFGetB(pixels[i]));
        bitmap.rgba[i * 4 + 3] = static_cast<std::uint8_t>(TIFFGetA(pixels[i]));
    }
    unpremultiply(bitmap);
    return bitmap;
}

Tiff open(const std::string& path)
{
    silenceLibtiff();
    if (FileSystem::fileSize(path) > TiffImageDecoder::maximumFileBytes) {
        return nullptr;
    }
    return Tiff(TIFFOpen(path.c_str(), "r"));
}

// The present directory's width and length, when the decoder reads pictures of that size.
std::optional<std::pair<std::uint32_t, std::uint32_t>> usableSize(TIFF* tiff)
{
    const std::uint32_t width = field(tiff, TIFFTAG_IMAGEWIDTH);
    const std::uint32_t height = field(tiff, TIFFTAG_IMAGELENGTH);
    const auto usable = [](std::uint32_t side) {
        return side > 0 && side <= TiffImageDecoder::maximumSide;
    };
    if (!usable(width) || !usable(height)) {
        return std::nullopt;
    }
    return std::pair{width, height};
}

} // namespace

std::optional<Size> TiffImageDecoder::pictureSize(const std::string& path) const
{
    const Tiff tiff = open(path);
    const auto size = tiff ? usableSize(tiff.get()) : std::nullopt;
    if (!size) {
        return std::nullopt;
    }
    return Size{static_cast<double>(size->first), static_cast<double>(size->second)};
}

std::optional<Bitmap> TiffImageDecoder::decode(const std::string& path, double scale) const
{
    const Tiff tiff = open(path);
    if (!tiff || !chooseDirectory(tiff.get(), scale)) {
        return std::nullopt;
    }
    const auto size = usableSize(tiff.get());
    if (!size) {
        return std::nullopt;
    }
    const auto [width, height] = *size;
    Bitmap bitmap{static_cast<int>(width), static_cast<int>(height),
                  std::vector<std::uint8_t>(static_cast<std::size_t>(width) * height * 4)};
    const std::uint16_t samples = shortField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL);
    const bool plainRows = shortField(tiff.get(), TIFFTAG_BITSPERSAMPLE) == 8 &&
                           shortField(tiff.get(), TIFFTAG_PLANARCONFIG) == PLANARCONFIG_CONTIG &&
                           shortField(tiff.get(), TIFFTAG_PHOTOMETRIC) == PHOTOMETRIC_RGB &&
                           (samples == 3 || samples == 4) && !TIFFIsTiled(tiff.get());
    return plainRows ? readScanlines(tiff.get(), std::move(bitmap), samples)
                     : readConverted(tiff.get(), std::move(bitmap));
}

} // namespace vexto
