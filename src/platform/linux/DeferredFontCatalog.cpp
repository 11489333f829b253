#include "platform/linux/DeferredFontCatalog.hpp"

#include "platform/linux/DesktopServices.hpp"

namespace vexto {

namespace {

const FontCatalog* catalog()
{
    DesktopServices* desktop = DesktopServices::shared();
    return desktop != nullptr ? &desktop->fonts() : nullptr;
}

} // namespace

std::vector<std::string> DeferredFontCatalog::availableFontFamilies() const
{
    const FontCatalog* fonts = catalog();
    return fonts != nullptr ? fonts->availableFontFamilies() : std::vector<std::string>{};
}

std::vector<std::string>
DeferredFontCatalog::availableMembersOfFontFamily(const std::string& family) const
{
    const FontCatalog* fonts = catalog();
    return fonts != nullptr ? fonts->availableMembersOfFontFamily(family)
                            : std::vector<std::string>{};
}

std::optional<Font> DeferredFontCatalog::fontWithName(const std::string& fontName,
                                                      double size) const
{
    const FontCatalog* fonts = catalog();
    return fonts != nullptr ? fonts->fontWithName(fontName, size) : std::nullopt;
}

} // namespace vexto
