#pragma once

#include "foundation/Color.hpp"
#include "foundation/Size.hpp"

namespace vexto {

// A shadow under what is drawn next: offset (y upward), blur radius and colour.
struct Shadow {
    Size offset;
    double blurRadius = 0;
    Color color = Color::calibratedWhite(0, 1.0f / 3.0f);
};

} // namespace vexto
