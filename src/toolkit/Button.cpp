#include "toolkit/Button.hpp"

#include "toolkit/Image.hpp"

namespace vexto {

Button::Button(Rect frame, Kind kind) : Control(frame), kind_(kind) {}

const char* Button::className() const
{
    switch (kind_) {
    case Kind::CheckBox:
        return "CheckBox";
    case Kind::Toggle:
        return "ToggleButton";
    case Kind::Push:
        break;
    }
    return "Button";
}

void Button::setTitle(std::string title)
{
    if (title_ == title) {
        return;
    }
    title_ = std::move(title);
    notify(ViewChange::Title);
}

void Button::setState(int state)
{
    int resolved = offState;
    if (state < 0) {
        resolved = allowsMixed_ ? mixedState : onState;
    } else if (state > 0) {
        resolved = onState;
    }
    if (state_ == resolved) {
        return;
    }
    state_ = resolved;
    notify(ViewChange::Value);
}

void Button::setAllowsMixedState(bool allows)
{
    allowsMixed_ = allows;
    if (!allows && state_ == mixedState) {
        setState(onState);
    }
}

int Button::nextState() const
{
    if (state_ == onState) {
        return offState;
    }
    if (state_ == offState) {
        return allowsMixed_ ? mixedState : onState;
    }
    return onState;
}

void Button::setHighlighted(bool highlighted)
{
    if (highlighted_ == highlighted) {
        return;
    }
    highlighted_ = highlighted;
    setNeedsDisplay();
}

void Button::setImage(std::shared_ptr<Image> image)
{
    image_ = std::move(image);
    setNeedsDisplay();
}

void Button::performClick()
{
    if (!isEnabled()) {
        return;
    }
    if (kind_ != Kind::Push) {
        setState(nextState());
    }
    sendAction();
}

void Button::mouseDown(const Event&)
{
    performClick();
}

} // namespace vexto
