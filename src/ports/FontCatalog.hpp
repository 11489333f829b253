#pragma once

#include "foundation/Font.hpp"

#include <optional>
#include <string>
#include <vector>

namespace vexto {

// The fonts installed on the system.
class FontCatalog {
public:
    virtual ~FontCatalog() = default;
    virtual std::vector<std::string> availableFontFamilies() const = 0;
    // The font names of the family's members, in the family's own order.
    virtual std::vector<std::string>
    availableMembersOfFontFamily(const std::string& family) const = 0;
    // None when no installed font has that name.
    virtual std::optional<Font> fontWithName(const std::string& fontName, double size) const = 0;
};

} // namespace vexto
