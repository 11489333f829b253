#pragma once

#include "foundation/Point.hpp"
#include "foundation/Rect.hpp"

#include <algorithm>
#include <vector>

namespace vexto {

// The shapes the pane draws: rectangles with optionally rounded corners, ovals, and closed
// polygons (its images' arrows and crosses).
class BezierPath {
public:
    enum class Kind { Rect, Oval, Polygon };

    static BezierPath rect(Rect rect) { return BezierPath(Kind::Rect, rect, 0, 0, {}); }
    static BezierPath roundedRect(Rect rect, double xRadius, double yRadius)
    {
        return BezierPath(Kind::Rect, rect, xRadius, yRadius, {});
    }
    static BezierPath oval(Rect rect) { return BezierPath(Kind::Oval, rect, 0, 0, {}); }
    // Closed: the last point joins the first.
    static BezierPath polygon(std::vector<Point> points)
    {
        Rect bounds;
        if (!points.empty()) {
            double x0 = points[0].x, y0 = points[0].y, x1 = x0, y1 = y0;
            for (const Point& p : points) {
                x0 = std::min(x0, p.x);
                y0 = std::min(y0, p.y);
                x1 = std::max(x1, p.x);
                y1 = std::max(y1, p.y);
            }
            bounds = Rect(x0, y0, x1 - x0, y1 - y0);
        }
        return BezierPath(Kind::Polygon, bounds, 0, 0, std::move(points));
    }

    Kind kind() const { return kind_; }
    Rect bounds() const { return rect_; }
    double xRadius() const { return xRadius_; }
    double yRadius() const { return yRadius_; }
    bool isRounded() const { return xRadius_ > 0 || yRadius_ > 0; }
    const std::vector<Point>& points() const { return points_; }

    friend bool operator==(const BezierPath&, const BezierPath&) = default;

private:
    BezierPath(Kind kind, Rect rect, double xRadius, double yRadius, std::vector<Point> points)
        : kind_(kind), rect_(rect), xRadius_(xRadius), yRadius_(yRadius), points_(std::move(points))
    {}
    Kind kind_;
    Rect rect_;
    double xRadius_;
    double yRadius_;
    std::vector<Point> points_;
};

} // namespace vexto
