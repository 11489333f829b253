#pragma once

#include "toolkit/Control.hpp"

#include <memory>
#include <string>

namespace vexto {

class Image;

// Push buttons, toggles and check boxes. States: on 1, off 0, mixed -1 (only where mixed is
// allowed; setting a negative state elsewhere gives on).
class Button : public Control {
public:
    enum class Kind { Push, Toggle, CheckBox };
    static constexpr int onState = 1;
    static constexpr int offState = 0;
    static constexpr int mixedState = -1;

    explicit Button(Rect frame = {}, Kind kind = Kind::Push);
    const char* className() const override;

    Kind kind() const { return kind_; }
    const std::string& title() const { return title_; }
    void setTitle(std::string title);

    int state() const { return state_; }
    void setState(int state);
    bool allowsMixedState() const { return allowsMixed_; }
    void setAllowsMixedState(bool allows);
    // The state a click leads to: on -> off -> mixed -> on with mixed allowed, else on <-> off.
    int nextState() const;

    bool isHighlighted() const { return highlighted_; }
    void setHighlighted(bool highlighted);

    const std::shared_ptr<Image>& image() const { return image_; }
    void setImage(std::shared_ptr<Image> image);

    // A click: toggles and check boxes move to their next state, then the action is sent.
    // Nothing happens while disabled.
    void performClick();

    double doubleValue() const override { return state_; }
    void setDoubleValue(double value) override { setState(static_cast<int>(value)); }
    std::string stringValue() const override { return std::to_string(state_); }

    void mouseDown(const Event& event) override;

private:
    Kind kind_;
    std::string title_;
    int state_ = offState;
    bool allowsMixed_ = false;
    bool highlighted_ = false;
    std::shared_ptr<Image> image_;
};

} // namespace vexto
