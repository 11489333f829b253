#pragma once

#include "ports/FontCatalog.hpp"

#include <cstdint>
#include <map>

struct _FcConfig;

namespace vexto {

// The fonts fontconfig knows. A font's name is its PostScript name and its display name its
// full name (or family and style); a family's members come in order of weight, slant and
// width. The list is read at the first question (reading it costs milliseconds, which a pane
// that never opens its font menu need not pay), and read again when the families are asked for
// after fonts were installed or removed, as the times of fontconfig's font folders tell.
class FontconfigCatalog final : public FontCatalog {
public:
    // The system's configuration, or the configuration file given.
    explicit FontconfigCatalog(const std::string& configFile = {});
    ~FontconfigCatalog() override;
    FontconfigCatalog(const FontconfigCatalog&) = delete;
    FontconfigCatalog& operator=(const FontconfigCatalog&) = delete;

    std::vector<std::string> availableFontFamilies() const override;
    std::vector<std::string> availableMembersOfFontFamily(const std::string& family) const override;
    std::optional<Font> fontWithName(const std::string& fontName, double size) const override;

private:
    void loadIfNeeded() const;

    struct Member {
        std::string fontName;
        std::string displayName;
        std::string family;
        int weight = 0;
        int slant = 0;
        int width = 0;
        std::string style;
    };

    std::string configFile_;
    mutable bool loaded_ = false;
    mutable _FcConfig* config_ = nullptr; // kept for its list of font folders
    mutable std::int64_t foldersTime_ = 0;
    mutable std::map<std::string, std::vector<Member>> families_;
    mutable std::map<std::string, Member> byFontName_;
};

} // namespace vexto
