#pragma once

#include "foundation/Rect.hpp"

namespace vexto {

class View;

// A rectangle of a view whose owner hears mouseEntered/mouseExited as the mouse crosses it.
class TrackingArea {
public:
    TrackingArea(Rect rect, View* owner, int userInfo = 0)
        : rect_(rect), owner_(owner), userInfo_(userInfo)
    {}

    Rect rect() const { return rect_; }
    View* owner() const { return owner_; }
    int userInfo() const { return userInfo_; }

    // Whether the mouse was last seen inside; kept by the window that routes mouse moves.
    bool isMouseInside() const { return mouseInside_; }
    void setMouseInside(bool inside) { mouseInside_ = inside; }

private:
    Rect rect_;
    View* owner_;
    int userInfo_;
    bool mouseInside_ = false;
};

} // namespace vexto
