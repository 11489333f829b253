#pragma once

#include "foundation/Color.hpp"
#include "foundation/Font.hpp"
#include "foundation/Rect.hpp"
#include "toolkit/BezierPath.hpp"
#include "toolkit/Gradient.hpp"
#include "toolkit/Shadow.hpp"
#include "toolkit/TextAlignment.hpp"

#include <optional>
#include <string>

namespace vexto {

class Image;

// How drawn pixels combine with what is already there.
enum class CompositingOperation { SourceOver, SourceAtop, DestinationIn };

// Where custom views draw, in the view's own unflipped coordinates. A front paints it onto the
// screen; tests record it.
class Canvas {
public:
    virtual ~Canvas() = default;

    virtual void saveGraphicsState() = 0;
    virtual void restoreGraphicsState() = 0;

    // Fills the path; the operation says how the colour combines with what is there.
    virtual void fill(const BezierPath& path, const Color& color,
                      CompositingOperation operation) = 0;
    void fill(const BezierPath& path, const Color& color)
    {
        fill(path, color, CompositingOperation::SourceOver);
    }
    void fillRect(Rect rect, const Color& color) { fill(BezierPath::rect(rect), color); }
    // Narrows drawing to the path until the state is restored.
    virtual void clip(const BezierPath& path) = 0;
    // Fills the rectangle with the gradient running at the angle (degrees; 90 runs upward, so
    // the start colour is at the bottom; 270 runs downward).
    virtual void drawLinearGradient(const Gradient& gradient, Rect rect, double angle) = 0;
    // Applies to what is drawn next, until the state is restored; none removes it.
    virtual void setShadow(const std::optional<Shadow>& shadow) = 0;
    // Whether text drawn next is antialiased, until the state is restored (on at first).
    virtual void setShouldSmoothFonts(bool smooth) = 0;
    // Draws into a separate layer composited as one when it ends.
    virtual void beginTransparencyLayer(Rect rect) = 0;
    virtual void endTransparencyLayer() = 0;
    virtual void drawImage(const Image& image, Rect destination, CompositingOperation operation,
                           float fraction) = 0;
    virtual void drawText(const std::string& text, Rect rect, const Font& font, const Color& color,
                          TextAlignment alignment) = 0;
};

} // namespace vexto
