#include "platform/linux/DeferredImageDecoder.hpp"

#include "foundation/FileSystem.hpp"
#include "platform/linux/DesktopServices.hpp"
#include "platform/linux/TiffHeader.hpp"

namespace vexto {

std::optional<Bitmap> DeferredImageDecoder::decode(const std::string& path, double scale) const
{
    DesktopServices* desktop = DesktopServices::shared();
    return desktop != nullptr ? desktop->images().decode(path, scale) : std::nullopt;
}

std::optional<Size> DeferredImageDecoder::pictureSize(const std::string& path) const
{
    if (auto size = TiffHeader::firstPictureSize(path)) {
        return size;
    }
    if (!FileSystem::exists(path)) {
        return std::nullopt; // no reason to load the desktop's libraries
    }
    DesktopServices* desktop = DesktopServices::shared();
    return desktop != nullptr ? desktop->images().pictureSize(path) : std::nullopt;
}

} // namespace vexto
