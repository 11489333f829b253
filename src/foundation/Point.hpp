#pragma once

namespace vexto {

// A point in double-precision points; y grows upward.
struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

} // namespace vexto
