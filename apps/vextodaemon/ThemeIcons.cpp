#include "ThemeIcons.hpp"

#include "panel/IconLikeness.hpp"

#include <QIcon>
#include <QImage>
#include <QPixmap>

#include <cmath>

namespace vexto {

void ThemeIcons::fill(PanelContent& content, double itemSize, bool overlays)
{
    const int pixels = int(std::ceil(itemSize * 2));
    content.useProgramIcons(
        [&](const std::string& name) { return iconFor(name, pixels); }, overlays,
        [this](const auto& own, const auto& program) { return lookAlike(own, program); });
}

bool ThemeIcons::lookAlike(const std::shared_ptr<const Bitmap>& own,
                           const std::shared_ptr<const Bitmap>& program)
{
    constexpr std::size_t mostRemembered = 512;
    const auto key = std::pair(own.get(), program.get());
    if (const auto known = compared_.find(key); known != compared_.end()) {
        return known->second.alike;
    }
    if (compared_.size() >= mostRemembered) {
        compared_.clear(); // windows come and go: the icons of gone ones are let go of
    }
    const bool alike = iconsLookAlike(*own, *program);
    compared_.emplace(key, Compared{own, program, alike});
    return alike;
}

std::shared_ptr<const Bitmap> ThemeIcons::iconFor(const std::string& windowClass, int pixels)
{
    const auto known = icons_.find(windowClass);
    if (known != icons_.end()) {
        return known->second;
    }
    std::shared_ptr<const Bitmap> icon;
    if (const auto name = entries_.iconNameFor(windowClass)) {
        const QString named = QString::fromStdString(*name);
        const QIcon themed = named.startsWith('/') ? QIcon(named) : QIcon::fromTheme(named);
        // Straight alpha, as the panel keeps pixels.
        const QImage image =
            themed.pixmap(QSize(pixels, pixels)).toImage().convertToFormat(QImage::Format_RGBA8888);
        if (!image.isNull()) {
            Bitmap bitmap;
            bitmap.width = image.width();
            bitmap.height = image.height();
            for (int row = 0; row < image.height(); ++row) {
                const uchar* line = image.constScanLine(row);
                bitmap.rgba.insert(bitmap.rgba.end(), line, line + 4 * image.width());
            }
            icon = std::make_shared<const Bitmap>(std::move(bitmap));
        }
    }
    icons_[windowClass] = icon;
    return icon;
}

} // namespace vexto
