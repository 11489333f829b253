#pragma once

#include "toolkit/TextField.hpp"

namespace vexto {

class Button;

// A label that passes its clicks on to a button, so that the text beside a check box toggles it.
// Its text cannot be selected by the mouse.
class KRVXClickButtonTextField : public TextField {
public:
    using TextField::TextField;
    const char* className() const override { return "KRVXClickButtonTextField"; }

    Button* clickButton() const { return clickButton_; }
    void setClickButton(Button* button) { clickButton_ = button; }

    void mouseDown(const Event& event) override;

private:
    Button* clickButton_ = nullptr;
};

} // namespace vexto
