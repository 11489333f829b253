#pragma once

#include "toolkit/ActionTarget.hpp"
#include "toolkit/View.hpp"

#include <cstdint>
#include <string>

namespace vexto {

// A view that the user operates: enabled state, a target and action, and a value that reads as
// text or as a number.
class Control : public View {
public:
    using View::View;
    const char* className() const override { return "Control"; }

    bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled);

    ActionTarget* target() const { return target_; }
    void setTarget(ActionTarget* target) { target_ = target; }
    const std::string& action() const { return action_; }
    void setAction(std::string selector) { action_ = std::move(selector); }
    // Sends the action to the target when the target handles it; true when sent.
    bool sendAction();
    // Sends a given action to a given target with this control as sender.
    bool sendAction(std::string_view selector, ActionTarget* target);
    // Sends an action with any sender (a menu item, say); true when the target handled it.
    static bool sendAction(std::string_view selector, ActionTarget* target,
                           const ActionSender& sender);

    virtual std::string stringValue() const { return stringValue_; }
    virtual void setStringValue(std::string value);
    virtual double doubleValue() const;
    virtual void setDoubleValue(double value);
    std::int64_t integerValue() const;
    int intValue() const { return static_cast<int>(integerValue()); }
    float floatValue() const { return static_cast<float>(doubleValue()); }
    void setIntValue(int value) { setDoubleValue(value); }
    void setFloatValue(float value) { setDoubleValue(value); }

    bool acceptsFirstMouse(const Event*) const override { return false; }
    bool mouseDownCanMoveWindow() const override { return false; }

private:
    bool enabled_ = true;
    ActionTarget* target_ = nullptr;
    std::string action_;
    std::string stringValue_;
};

} // namespace vexto
