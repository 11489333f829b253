#pragma once

#include "foundation/Color.hpp"

namespace vexto {

// A linear gradient between two colours.
class Gradient {
public:
    Gradient(Color start, Color end) : start_(std::move(start)), end_(std::move(end)) {}

    const Color& startColor() const { return start_; }
    const Color& endColor() const { return end_; }

private:
    Color start_;
    Color end_;
};

} // namespace vexto
