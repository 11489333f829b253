#pragma once

#include "foundation/Rect.hpp"

namespace vexto {

// The shapes the pane draws: rectangles with optionally rounded corners.
class BezierPath {
public:
    static BezierPath rect(Rect rect) { return BezierPath(rect, 0, 0); }
    static BezierPath roundedRect(Rect rect, double xRadius, double yRadius)
    {
        return BezierPath(rect, xRadius, yRadius);
    }

    Rect bounds() const { return rect_; }
    double xRadius() const { return xRadius_; }
    double yRadius() const { return yRadius_; }
    bool isRounded() const { return xRadius_ > 0 || yRadius_ > 0; }

    friend bool operator==(const BezierPath&, const BezierPath&) = default;

private:
    BezierPath(Rect rect, double xRadius, double yRadius)
        : rect_(rect), xRadius_(xRadius), yRadius_(yRadius)
    {}

    Rect rect_;
    double xRadius_;
    double yRadius_;
};

} // namespace vexto
