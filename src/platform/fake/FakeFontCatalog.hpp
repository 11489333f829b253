#pragma once

#include "ports/FontCatalog.hpp"

#include <map>

namespace vexto {

// Installed fonts as the test lists them: per family, its members' (font name, display name).
// A member named "broken" cannot be made, as a font the system lists but cannot load.
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
        if (const auto found = families.find(family); found != families.end()) {
            for (const Member& member : found->second) {
                names.push_back(member.first);
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

    std::map<std::string, std::vector<Member>> families;
};

} // namespace vexto
