#include "qt/QtFonts.hpp"

#include <QGuiApplication>

namespace vexto {

namespace {

// The size the pane's texts are laid out for; the desktop's default face stands in at its own size.
constexpr double regularSize = 13;

} // namespace

QFont QtFonts::qtFont(const Font& font)
{
    if (font.fontName() == Font::systemFontOfSize(font.pointSize()).fontName()) {
        QFont qt = QGuiApplication::font();
        qt.setPointSizeF(qt.pointSizeF() * font.pointSize() / regularSize);
        return qt;
    }
    QFont qt;
    qt.setFamily(QString::fromStdString(font.familyName()));
    qt.setPointSizeF(font.pointSize());
    return qt;
}

} // namespace vexto
