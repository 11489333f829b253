#include "toolkit/Control.hpp"

#include "foundation/NumericText.hpp"

#include <cmath>

namespace vexto {

void Control::setEnabled(bool enabled)
{
    if (enabled_ == enabled) {
        return;
    }
    enabled_ = enabled;
    notify(ViewChange::Enabled);
}

bool Control::sendAction()
{
    return sendAction(action_, target_);
}

bool Control::sendAction(std::string_view selector, ActionTarget* target)
{
    return sendAction(selector, target, ActionSender(this));
}

bool Control::sendAction(std::string_view selector, ActionTarget* target,
                         const ActionSender& sender)
{
    if (target == nullptr || selector.empty() || !target->respondsToSelector(selector)) {
        return false;
    }
    target->performAction(selector, sender);
    return true;
}

void Control::setStringValue(std::string value)
{
    if (stringValue_ == value) {
        return;
    }
    stringValue_ = std::move(value);
    notify(ViewChange::Value);
}

double Control::doubleValue() const
{
    return NumericText::leadingReal(stringValue());
}

void Control::setDoubleValue(double value)
{
    setStringValue(NumericText::shortestText(value));
}

std::int64_t Control::integerValue() const
{
    const double value = doubleValue();
    return std::isfinite(value) ? static_cast<std::int64_t>(value) : 0;
}

} // namespace vexto
