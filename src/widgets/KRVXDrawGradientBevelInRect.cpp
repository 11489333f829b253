#include "widgets/KRVXDrawGradientBevelInRect.hpp"

#include "toolkit/Canvas.hpp"

namespace vexto {

namespace {

constexpr double topToBottom = 270;

} // namespace

void KRVXDrawGradientBevelInRect(Canvas& canvas, const Gradient* gradient,
                                 const std::optional<Color>& color, Rect rect, float radius)
{
    const BezierPath shape = BezierPath::roundedRect(rect, radius, radius);
    if (gradient != nullptr) {
        canvas.saveGraphicsState();
        canvas.clip(shape);
        canvas.drawLinearGradient(*gradient, rect, topToBottom);
        canvas.restoreGraphicsState();
    } else if (color) {
        canvas.fill(shape, *color);
    }
}

} // namespace vexto
