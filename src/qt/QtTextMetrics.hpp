#pragma once

#include "ports/TextMetrics.hpp"

namespace vexto {

// Text measured as the Qt front draws it.
class QtTextMetrics final : public TextMetrics {
public:
    double widthOfString(const std::string& text, const Font& font) const override;
};

} // namespace vexto
