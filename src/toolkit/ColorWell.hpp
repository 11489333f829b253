#pragma once

#include "foundation/Color.hpp"
#include "toolkit/Control.hpp"

#include <string>

namespace vexto {

// A well showing a colour; activating it connects it to the shared colour panel, whose changes
// it then takes and sends as its action.
class ColorWell : public Control {
public:
    using Control::Control;
    ~ColorWell() override;
    const char* className() const override { return "ColorWell"; }

    const Color& color() const { return color_; }
    virtual void setColor(Color color);

    // What the well's colour is for ("Background"), shown as the colour panel's title.
    const std::string& title() const { return title_; }
    void setTitle(std::string title) { title_ = std::move(title); }

    bool isActive() const { return active_; }
    // Becomes the panel's well (the previous one is deactivated) and shows the panel.
    virtual void activate(bool exclusive);
    virtual void deactivate();

    // A click toggles the well's connection to the panel.
    void performClick();
    void mouseDown(const Event& event) override;

private:
    friend class ColorPanel;
    void takeColorFromPanel(const Color& color);

    Color color_ = Color::calibratedWhite(1, 1);
    std::string title_;
    bool active_ = false;
};

} // namespace vexto
