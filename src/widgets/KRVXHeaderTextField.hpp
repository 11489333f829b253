#pragma once

#include "toolkit/Shadow.hpp"
#include "toolkit/TextField.hpp"

namespace vexto {

class Window;

// Header text with a one-point shadow below it, strong in the main window of the active
// application and faint elsewhere; a tag of -1 turns the shadow off.
class KRVXHeaderTextField : public TextField {
public:
    using TextField::TextField;
    const char* className() const override { return "KRVXHeaderTextField"; }
    bool isCustomDrawn() const override { return true; }
    void drawRect(Canvas& canvas, const Rect& dirtyRect) override;

    // Black at an alpha for the window: none gives opaque black, a main window 0.7 while the
    // application is active and 0.3 when not, any other window 0.3.
    static Shadow bottomShadowForWindow(const Window* window);
    static Shadow bottomBlackShadow() { return bottomShadowForWindow(nullptr); }

protected:
    // What the field shows, in `frame`: the text here; subclasses add to it.
    virtual void drawCell(Canvas& canvas, Rect frame) const;
    virtual Shadow bottomShadow() const { return bottomShadowForWindow(window()); }
};

} // namespace vexto
