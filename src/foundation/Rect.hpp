#pragma once

#include "foundation/Point.hpp"
#include "foundation/Size.hpp"

#include <algorithm>

namespace vexto {

// A rectangle with its origin at the lower left corner (unflipped coordinates).
struct Rect {
    Point origin;
    Size size;

    Rect() = default;
    Rect(double x, double y, double width, double height) : origin{x, y}, size{width, height} {}
    Rect(Point o, Size s) : origin(o), size(s) {}

    double minX() const { return origin.x; }
    double minY() const { return origin.y; }
    double maxX() const { return origin.x + size.width; }
    double maxY() const { return origin.y + size.height; }
    double midX() const { return origin.x + size.width / 2; }
    double midY() const { return origin.y + size.height / 2; }
    double width() const { return size.width; }
    double height() const { return size.height; }

    bool isEmpty() const { return size.width <= 0 || size.height <= 0; }

    bool contains(Point p) const
    {
        return p.x >= minX() && p.x < maxX() && p.y >= minY() && p.y < maxY();
    }

    Rect insetBy(double dx, double dy) const
    {
        return Rect(origin.x + dx, origin.y + dy, size.width - 2 * dx, size.height - 2 * dy);
    }

    Rect offsetBy(double dx, double dy) const
    {
        return Rect(origin.x + dx, origin.y + dy, size.width, size.height);
    }

    // The smallest rectangle holding both; an empty rectangle adds nothing.
    Rect unionWith(const Rect& other) const
    {
        if (isEmpty()) {
            return other;
        }
        if (other.isEmpty()) {
            return *this;
        }
        const double x0 = std::min(minX(), other.minX());
        const double y0 = std::min(minY(), other.minY());
        return Rect(x0, y0, std::max(maxX(), other.maxX()) - x0,
                    std::max(maxY(), other.maxY()) - y0);
    }

    // The area both share; empty (zero size) when they do not meet.
    Rect intersection(const Rect& other) const
    {
        const double x0 = std::max(minX(), other.minX());
        const double y0 = std::max(minY(), other.minY());
        const double x1 = std::min(maxX(), other.maxX());
        const double y1 = std::min(maxY(), other.maxY());
        if (x1 <= x0 || y1 <= y0) {
            return Rect();
        }
        return Rect(x0, y0, x1 - x0, y1 - y0);
    }

    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace vexto
