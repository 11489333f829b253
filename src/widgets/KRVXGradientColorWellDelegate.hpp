#pragma once

#include <cstdint>

namespace vexto {

class ColorWell;

// Keeps the gradient value of a gradient colour well: the well only shows and edits it.
class KRVXGradientColorWellDelegate {
public:
    virtual ~KRVXGradientColorWellDelegate() = default;
    virtual std::int64_t gradientValueForWell(const ColorWell* well) = 0;
    virtual void setGradientValue(std::int64_t value, const ColorWell* well) = 0;
};

} // namespace vexto
