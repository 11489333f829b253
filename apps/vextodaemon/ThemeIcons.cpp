#include "ThemeIcons.hpp"

#include <QIcon>
#include <QImage>
#include <QPixmap>

#include <cmath>

namespace vexto {

void ThemeIcons::fill(PanelContent& content, double itemSize)
{
    for (PanelContent::Application& application : content.applications) {
        if (!application.icon) {
            application.icon = iconFor(application.name, int(std::ceil(itemSize * 2)));
        }
    }
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
