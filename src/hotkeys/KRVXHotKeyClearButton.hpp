#pragma once

#include "toolkit/Button.hpp"

#include <memory>

namespace vexto {

class Image;

// The small button beside a hot-key field that clears the field's hot key. It draws one of three
// images: "KRHotKeyDeleteOn.tiff" while enabled, the same darkened with black at 0.1 while
// pressed, and "KRHotKeyDeleteOff.tiff" while disabled; without its images it draws nothing.
class KRVXHotKeyClearButton : public Button {
public:
    explicit KRVXHotKeyClearButton(Rect frame = {}) : Button(frame, Kind::Push) {}
    const char* className() const override { return "HotKeyClearButton"; }
    bool isCustomDrawn() const override { return true; }
    void drawRect(Canvas& canvas, const Rect& dirtyRect) override;
    // Shows the pressed image while the mouse goes down, then clicks.
    void mouseDown(const Event& event) override;

    static std::shared_ptr<Image> enabledImage();
    static std::shared_ptr<Image> pressedImage();
    static std::shared_ptr<Image> disabledImage();
};

} // namespace vexto
