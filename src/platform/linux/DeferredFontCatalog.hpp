#pragma once

#include "ports/FontCatalog.hpp"

namespace vexto {

// The installed fonts from the desktop module, loaded when fonts are first asked for (a font
// menu opened, a stored font looked up). Without the module there are no fonts.
class DeferredFontCatalog final : public FontCatalog {
public:
    std::vector<std::string> availableFontFamilies() const override;
    std::vector<std::string> availableMembersOfFontFamily(const std::string& family) const override;
    std::optional<Font> fontWithName(const std::string& fontName, double size) const override;
};

} // namespace vexto
