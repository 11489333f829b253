#pragma once

#include "foundation/Color.hpp"
#include "toolkit/View.hpp"

#include <cstdint>
#include <string_view>

namespace vexto {

class ActionTarget;
class Slider;

// The strip under the colour panel's pickers: the gradient slider between two sample squares
// that show the current colour at the slider's two ends. A click anywhere in either end's
// square zone (the full strip height wide) moves the slider to that end.
class KRVXGradientColorWellAccessoryView : public View {
public:
    static constexpr double stripHeight = 22;
    static constexpr double sliderSideInset = 29;
    static constexpr double squareMargin = 7;

    using View::View;
    const char* className() const override { return "KRVXGradientColorWellAccessoryView"; }
    bool isCustomDrawn() const override { return true; }

    // The first direct subview that is a slider whose target answers the selector (any slider
    // for an empty selector); its target is written to `target` when one is asked for.
    Slider* enclosedSliderWithTarget(ActionTarget** target, std::string_view selector) const;

    bool acceptsFirstMouse(const Event*) const override { return true; }
    void mouseDown(const Event& event) override;

    void drawIndicatorForGradientValue(Canvas& canvas, std::int64_t value, const Color& color,
                                       Rect rect) const;
    void drawRect(Canvas& canvas, const Rect& dirtyRect) override;

    // The shading of a gradient value: white and black at |value|/100 opacity (at most opaque),
    // darkening the top for negative values and the bottom for positive ones; 0 draws nothing.
    static void drawGradientWithValue(Canvas& canvas, std::int64_t value, Rect rect);
};

} // namespace vexto
