#pragma once

#include "foundation/Font.hpp"

#include <string>

namespace vexto {

// How wide a text is when drawn in a font: what the front that draws it measures.
class TextMetrics {
public:
    virtual ~TextMetrics() = default;
    virtual double widthOfString(const std::string& text, const Font& font) const = 0;
};

} // namespace vexto
