#include "widgets/KRVXGradientColorWellAccessoryView.hpp"

#include "toolkit/Canvas.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/Event.hpp"
#include "toolkit/Slider.hpp"

#include <algorithm>

namespace vexto {

Slider*
KRVXGradientColorWellAccessoryView::enclosedSliderWithTarget(ActionTarget** target,
                                                             std::string_view selector) const
{
    for (const auto& subview : subviews()) {
        auto* slider = dynamic_cast<Slider*>(subview.get());
        if (slider == nullptr) {
            continue;
        }
        ActionTarget* sliderTarget = slider->target();
        if (!selector.empty() &&
            (sliderTarget == nullptr || !sliderTarget->respondsToSelector(selector))) {
            continue;
        }
        if (target != nullptr) {
            *target = sliderTarget;
        }
        return slider;
    }
    return nullptr;
}

void KRVXGradientColorWellAccessoryView::mouseDown(const Event& event)
{
    ActionTarget* target = nullptr;
    Slider* slider = enclosedSliderWithTarget(&target, {});
    if (slider == nullptr || slider->action().empty() || target == nullptr ||
        !target->respondsToSelector(slider->action())) {
        return;
    }
    const Point click = convertPointFromView(event.locationInWindow(), nullptr);
    const double height = bounds().height();
    if (click.x < height) {
        slider->setDoubleValue(slider->minValue());
    } else if (click.x > bounds().width() - height) {
        slider->setDoubleValue(slider->maxValue());
    } else {
        return;
    }
    slider->sendAction();
}

void KRVXGradientColorWellAccessoryView::drawIndicatorForGradientValue(Canvas& canvas,
                                                                       std::int64_t value,
                                                                       const Color& color,
                                                                       Rect rect) const
{
    canvas.fillRect(rect, Color::calibratedWhite(2.0F / 3.0F, 1));
    canvas.fillRect(rect.insetBy(1, 1), Color::calibratedWhite(1, 1));
    const Rect sample = rect.insetBy(2, 2);
    canvas.fillRect(sample, color);
    drawGradientWithValue(canvas, value, sample);
}

void KRVXGradientColorWellAccessoryView::drawRect(Canvas& canvas, const Rect&)
{
    ActionTarget* target = nullptr;
    const Slider* slider = enclosedSliderWithTarget(&target, "color");
    const auto* well = dynamic_cast<const ColorWell*>(target);
    if (slider == nullptr || well == nullptr) {
        return;
    }
    const Rect area = bounds();
    const Rect work(area.minX(), area.minY() + squareMargin, area.width(),
                    area.height() - squareMargin);
    const double side = work.height();
    drawIndicatorForGradientValue(canvas, static_cast<std::int64_t>(slider->minValue()),
                                  well->color(),
                                  Rect(area.minX() + squareMargin, work.minY(), side, side));
    drawIndicatorForGradientValue(
        canvas, static_cast<std::int64_t>(slider->maxValue()), well->color(),
        Rect(area.minX() + area.width() - side - squareMargin, work.minY(), side, side));
}

void KRVXGradientColorWellAccessoryView::drawGradientWithValue(Canvas& canvas, std::int64_t value,
                                                               Rect rect)
{
    if (value == 0) {
        return;
    }
    // Stored values may be anything a settings file holds; past 100 the shading is opaque.
    const std::int64_t magnitude = std::clamp<std::int64_t>(value, -100, 100);
    const auto opacity =
        static_cast<float>(static_cast<double>(magnitude < 0 ? -magnitude : magnitude) / 100.0);
    const Gradient shading(Color::calibratedWhite(1, opacity), Color::calibratedWhite(0, opacity));
    canvas.drawLinearGradient(shading, rect, value < 0 ? 90 : 270);
}

} // namespace vexto
