#include "widgets/KRVXActionButtonTextFieldCell.hpp"

#include "toolkit/Application.hpp"
#include "toolkit/Canvas.hpp"
#include "toolkit/Image.hpp"
#include "widgets/ImageDrawing.hpp"
#include "widgets/KRVXActionButtonTextField.hpp"
#include "widgets/KRVXDrawGradientBevelInRect.hpp"

#include <cmath>
#include <limits>

namespace vexto {

namespace {

const Gradient& pressedGradient()
{
    static const Gradient gradient(Color::calibratedWhite(0.4f, 1),
                                   Color::calibratedWhite(0.1f, 1));
    return gradient;
}

float floorf32(double value)
{
    return std::floor(static_cast<float>(value));
}

} // namespace

double KRVXActionButtonTextFieldCell::textWidth() const
{
    return Application::shared().widthOfString(field_.stringValue(), field_.font());
}

Size KRVXActionButtonTextFieldCell::cellSizeForTextWidth(double text, Rect bounds)
{
    return Size{std::min(text + 2 * textInset, bounds.width()), bounds.height()};
}

Size KRVXActionButtonTextFieldCell::cellSizeForBounds(Rect bounds) const
{
    return cellSizeForTextWidth(textWidth(), bounds);
}

float KRVXActionButtonTextFieldCell::rawCellWidthForCellFrame(Rect frame, const Image* image,
                                                              float* padding) const
{
    // The text is measured once: measuring is the costly part of laying the field out.
    const double text = textWidth();
    const auto c = static_cast<float>(
        cellSizeForTextWidth(text, Rect(0, 0, std::numeric_limits<float>::max(), frame.height()))
            .width);
    if (padding != nullptr) {
        *padding = floorf32((c - text) * 0.5);
    }
    float available = static_cast<float>(frame.width());
    if (image != nullptr) {
        available -= static_cast<float>(image->size().width + imageGap);
    }
    return c <= available ? c : available;
}

Rect KRVXActionButtonTextFieldCell::textFrameForCellFrame(Rect frame, bool edit) const
{
    if (edit) {
        return frame;
    }
    const Image* image = field_.actionButtonImage().get();
    const float w = rawCellWidthForCellFrame(frame, image, nullptr);
    double total = w;
    if (image != nullptr) {
        total += image->size().width + imageGap;
    }
    double x = frame.minX();
    if (field_.alignment() == TextAlignment::Right) {
        x += frame.width() - total;
    } else if (field_.alignment() == TextAlignment::Center) {
        x += floorf32((frame.width() - total) * 0.5);
    }
    return Rect(x, frame.minY(), w, frame.height());
}

Rect KRVXActionButtonTextFieldCell::actionButtonFrameForCellFrame(Rect frame, float* padding) const
{
    const Image* image = field_.actionButtonImage().get();
    float p = 0;
    const float w = rawCellWidthForCellFrame(frame, image, &p);
    if (padding != nullptr) {
        *padding = p;
    }
    if (image == nullptr) {
        return Rect();
    }
    const double iw = image->size().width;
    const double ih = image->size().height;
    const double W = frame.width();
    double base = w + imageGap;
    if (field_.alignment() == TextAlignment::Center) {
        base = floorf32((w + W + imageGap - iw) * 0.5);
    } else if (field_.alignment() == TextAlignment::Right) {
        base = W - iw;
    }
    // The frame's origin is not added: the frame is always the field's bounds.
    return Rect(base - p, floorf32((frame.height() - ih) * 0.5), iw, ih);
}

Rect KRVXActionButtonTextFieldCell::contentFrameForCellFrame(Rect frame) const
{
    float p = 0;
    const Rect button = actionButtonFrameForCellFrame(frame, &p);
    Rect content = textFrameForCellFrame(frame, false);
    if (!button.isEmpty()) {
        content = content.unionWith(button);
        content.size.width += p;
    }
    content = content.insetBy(p - 2, 0);
    const auto x = static_cast<float>(content.minX());
    if (x > 0.99f) {
        const double d = x > 1.99f ? 2 : x;
        content.origin.x -= d;
        content.size.width += d;
    }
    return content;
}

void KRVXActionButtonTextFieldCell::drawText(Canvas& canvas, Rect frame, const Color& color) const
{
    canvas.drawText(field_.stringValue(), frame.insetBy(textInset, 0), field_.font(), color,
                    TextAlignment::Left);
}

// The dark lozenge under the mouse, or the pressed one while the button is held.
void KRVXActionButtonTextFieldCell::drawHighlight(Canvas& canvas, Rect frame) const
{
    Rect c = contentFrameForCellFrame(frame);
    if (clicked_) {
        c.size.height -= 2;
        const auto radius = floorf32(c.height() * 0.5);
        KRVXDrawGradientBevelInRect(canvas, nullptr, Color::calibratedWhite(0, 0.9f), c, radius);
        c.origin.y += 2;
        KRVXDrawGradientBevelInRect(
            canvas, nullptr, Color::calibratedWhite(1, field_.tag() == 1 ? 0.5f : 1.0f), c, radius);
        c.origin.y -= 1;
        KRVXDrawGradientBevelInRect(canvas, &pressedGradient(), std::nullopt, c, radius);
        if (field_.tag() < 0) {
            canvas.setShadow(KRVXHeaderTextField::bottomBlackShadow());
            drawText(canvas, textFrameForCellFrame(frame, false), Color::whiteColor());
        }
    } else {
        c.size.height -= 1;
        KRVXDrawGradientBevelInRect(canvas, nullptr, Color::calibratedWhite(0, 0.47f), c,
                                    floorf32(c.height() * 0.5) - 1);
    }
}

void KRVXActionButtonTextFieldCell::drawWithFrame(Canvas& canvas, Rect frame) const
{
    const bool lit = hovered_ || clicked_;
    // Under the mouse, text and image turn white on the lozenge; otherwise the image takes the
    // text's colour.
    const Color color = lit ? Color::whiteColor() : field_.textColor();
    if (lit) {
        canvas.saveGraphicsState();
        drawHighlight(canvas, frame);
        canvas.restoreGraphicsState();
    }
    drawText(canvas, textFrameForCellFrame(frame, false), color);
    const Rect button = actionButtonFrameForCellFrame(frame);
    if (button.isEmpty()) {
        return;
    }
    if (clicked_) {
        canvas.saveGraphicsState();
        canvas.setShadow(KRVXHeaderTextField::bottomBlackShadow());
    }
    drawInRect(canvas, *field_.actionButtonImage(), button, color, 1.0f);
    if (clicked_) {
        canvas.restoreGraphicsState();
    }
}

} // namespace vexto
