#pragma once

#include "foundation/Color.hpp"
#include "foundation/Rect.hpp"
#include "toolkit/Gradient.hpp"

#include <optional>

namespace vexto {

class Canvas;

// Fills the rounded rectangle: with the gradient top to bottom when there is one (it wins over
// the colour), else with the colour, else not at all. Every custom-drawn widget of the pane fills
// its rounded shapes this way.
void KRVXDrawGradientBevelInRect(Canvas& canvas, const Gradient* gradient,
                                 const std::optional<Color>& color, Rect rect, float radius);

} // namespace vexto
