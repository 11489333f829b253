#include "qt/QtTextMetrics.hpp"

#include "qt/QtFonts.hpp"

#include <QFontMetricsF>

namespace vexto {

double QtTextMetrics::widthOfString(const std::string& text, const Font& font) const
{
    return QFontMetricsF(QtFonts::qtFont(font)).horizontalAdvance(QString::fromStdString(text));
}

} // namespace vexto
