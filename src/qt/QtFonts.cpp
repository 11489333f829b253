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
    // A member of a family is named "<family> <style>" ("DejaVu Sans Bold"): the style picks
    // the face within the family.
    const std::string& family = font.familyName();
    const std::string& display = font.displayName();
    if (display.size() > family.size() + 1 && display.compare(0, family.size(), family) == 0 &&
        display[family.size()] == ' ') {
        qt.setStyleName(QString::fromStdString(display.substr(family.size() + 1)));
    }
    return qt;
}

} // namespace vexto
