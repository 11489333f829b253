#pragma once

#include "ports/FontCatalog.hpp"

#include <utility>
#include <vector>

namespace vexto {

// Installed fonts as the test lists them: per family, its members' (font name, display name).
// A member named "broken" cannot be made, as a font the system lists but cannot load. Families
// are handed over in the test's order, not sorted: the system promises no order either.
class FakeFontCatalog final : public FontCatalog {
public:
    using Member = std::pair<std::string, std::string>;

    std::vector<std::string> availableFontFamilies() const override
    {
        std::vector<std::string> names;
        for (const auto& [family, members] : families) {
            names.push_back(family);
        }
        return names;
    }
    std::vector<std::string> availableMembersOfFontFamily(const std::string& family) const override
    {
        std::vector<std::string> names;
        for (const auto& [name, members] : families) {
            if (name == family) {
                for (const Member& member : members) {
                    names.push_back(member.first);
                }
            }
        }
        return names;
    }
    std::optional<Font> fontWithName(const std::string& fontName, double size) const override
    {
        for (const auto& [family, members] : families) {
            for (const Member& member : members) {
                if (member.first == fontName && fontName != "broken") {
                    return Font(member.first, member.second, family, size);
                }
            }
        }
        return std::nullopt;
    }

    std::vector<std::pair<std::string, std::vector<Member>>> families;
};

} // namespace vexto
