#pragma once

#include "foundation/Font.hpp"

#include <QFont>

namespace vexto {

// The pane's fonts as Qt's: the interface's own "System" font is the desktop's default face at
// its own size for the regular 13 points, scaled alike for other sizes.
class QtFonts {
public:
    static QFont qtFont(const Font& font);
};

} // namespace vexto
