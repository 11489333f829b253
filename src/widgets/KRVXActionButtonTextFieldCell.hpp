#pragma once

#include "foundation/Color.hpp"
#include "foundation/Rect.hpp"
#include "foundation/Size.hpp"

namespace vexto {

class Canvas;
class Image;
class KRVXActionButtonTextField;

// The geometry and drawing of an action-button text field: its text, then 4 points on, a small
// image that acts as a button, lit under the mouse and pressed while held. Frames are the
// field's bounds (origin 0, 0); widths computed as floats are single precision.
class KRVXActionButtonTextFieldCell {
public:
    // Space the platform's text cell keeps on either side of its text.
    static constexpr double textInset = 2;
    static constexpr double imageGap = 4;

    explicit KRVXActionButtonTextFieldCell(const KRVXActionButtonTextField& field) : field_(field)
    {}

    bool isHovered() const { return hovered_; }
    void setHovered(bool hovered) { hovered_ = hovered; }
    bool isClicked() const { return clicked_; }
    void setClicked(bool clicked) { clicked_ = clicked; }

    const KRVXActionButtonTextField& actionButtonTextField() const { return field_; }

    // What the cell asks for with unbounded width: the text and its insets.
    Size cellSizeForBounds(Rect bounds) const;
    // The width of the text part, cut so that an image still fits; `padding` (optional) gets the
    // cell's own inset beside the text.
    float rawCellWidthForCellFrame(Rect frame, const Image* image, float* padding) const;
    Rect textFrameForCellFrame(Rect frame, bool edit) const;
    Rect actionButtonFrameForCellFrame(Rect frame, float* padding = nullptr) const;
    // Text and image together, for the highlight.
    Rect contentFrameForCellFrame(Rect frame) const;
    void drawWithFrame(Canvas& canvas, Rect frame) const;

private:
    double textWidth() const;
    static Size cellSizeForTextWidth(double text, Rect bounds);
    void drawText(Canvas& canvas, Rect frame, const Color& color) const;
    void drawHighlight(Canvas& canvas, Rect frame) const;

    const KRVXActionButtonTextField& field_;
    bool hovered_ = false;
    bool clicked_ = false;
};

} // namespace vexto
