#include "toolkit/Slider.hpp"

#include "foundation/NumericText.hpp"

#include <algorithm>

namespace vexto {

Slider::Slider(Rect frame, double minValue, double maxValue)
    : Control(frame), min_(minValue), max_(maxValue), value_(minValue)
{}

void Slider::setMinValue(double value)
{
    min_ = value;
    setDoubleValue(value_);
    notify(ViewChange::Appearance);
}

void Slider::setMaxValue(double value)
{
    max_ = value;
    setDoubleValue(value_);
    notify(ViewChange::Appearance);
}

void Slider::setDoubleValue(double value)
{
    const double clamped = std::clamp(value, std::min(min_, max_), std::max(min_, max_));
    if (clamped == value_) {
        return;
    }
    value_ = clamped;
    notify(ViewChange::Value);
}

std::string Slider::stringValue() const
{
    return NumericText::shortestText(value_);
}

void Slider::sizeToFit()
{
    setFrameSize(Size{frame().width(), small_ ? 17.0 : 21.0});
}

} // namespace vexto
