#include "platform/linux/FontconfigCatalog.hpp"

#include <algorithm>
#include <cstdint>
#include <fontconfig/fontconfig.h>
#include <sys/stat.h>
#include <tuple>

namespace vexto {

namespace {

std::string stringOf(FcPattern* pattern, const char* object)
{
    FcChar8* value = nullptr;
    return FcPatternGetString(pattern, object, 0, &value) == FcResultMatch && value != nullptr
               ? std::string(reinterpret_cast<const char*>(value))
               : std::string();
}

int integerOf(FcPattern* pattern, const char* object)
{
    int value = 0;
    return FcPatternGetInteger(pattern, object, 0, &value) == FcResultMatch ? value : 0;
}

FcConfig* loadConfig(const std::string& configFile)
{
    if (configFile.empty()) {
        return FcInitLoadConfigAndFonts();
    }
    FcConfig* config = FcConfigCreate();
    if (config == nullptr ||
        !FcConfigParseAndLoad(config, reinterpret_cast<const FcChar8*>(configFile.c_str()),
                              FcTrue) ||
        !FcConfigBuildFonts(config)) {
        if (config != nullptr) {
            FcConfigDestroy(config);
        }
        return nullptr;
    }
    return config;
}

// The latest change to any folder fontconfig takes fonts from, to the nanosecond: installing or
// removing a font changes its folder. (fontconfig's own check counts whole seconds, and so misses
// a font installed in the second the list was read.)
std::int64_t newestFontFolderTime(FcConfig* config)
{
    std::int64_t newest = 0;
    FcStrList* folders = FcConfigGetFontDirs(config);
    for (FcChar8* folder = folders != nullptr ? FcStrListNext(folders) : nullptr; folder != nullptr;
         folder = FcStrListNext(folders)) {
        struct stat info {};
        if (::stat(reinterpret_cast<const char*>(folder), &info) == 0) {
            newest = std::max<std::int64_t>(newest, std::int64_t(info.st_mtim.tv_sec) * 1000000000 +
                                                        info.st_mtim.tv_nsec);
        }
    }
    if (folders != nullptr) {
        FcStrListDone(folders);
    }
    return newest;
}

} // namespace

FontconfigCatalog::FontconfigCatalog(const std::string& configFile) : configFile_(configFile) {}

FontconfigCatalog::~FontconfigCatalog()
{
    if (config_ != nullptr) {
        FcConfigDestroy(config_);
    }
}

void FontconfigCatalog::loadIfNeeded() const
{
    if (loaded_) {
        return;
    }
    loaded_ = true;
    FcConfig* config = loadConfig(configFile_);
    if (config == nullptr) {
        return;
    }
    config_ = config;
    foldersTime_ = newestFontFolderTime(config);
    FcPattern* all = FcPatternCreate();
    FcObjectSet* objects =
        FcObjectSetBuild(FC_FAMILY, FC_STYLE, FC_POSTSCRIPT_NAME, FC_FULLNAME, FC_WEIGHT, FC_SLANT,
                         FC_WIDTH, static_cast<char*>(nullptr));
    FcFontSet* fonts = FcFontList(config, all, objects);
    for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i) {
        FcPattern* pattern = fonts->fonts[i];
        Member member;
        member.fontName = stringOf(pattern, FC_POSTSCRIPT_NAME);
        member.family = stringOf(pattern, FC_FAMILY); // the first, the family's own name
        member.style = stringOf(pattern, FC_STYLE);
        member.displayName = stringOf(pattern, FC_FULLNAME);
        if (member.displayName.empty()) {
            member.displayName = member.family + (member.style.empty() ? "" : " " + member.style);
        }
        member.weight = integerOf(pattern, FC_WEIGHT);
        member.slant = integerOf(pattern, FC_SLANT);
        member.width = integerOf(pattern, FC_WIDTH);
        // A face without a PostScript name cannot be named in the settings; one listed twice
        // (by two configuration paths) is one font.
        if (member.fontName.empty() || member.family.empty() ||
            byFontName_.contains(member.fontName)) {
            continue;
        }
        byFontName_[member.fontName] = member;
        families_[member.family].push_back(std::move(member));
    }
    for (auto& [family, members] : families_) {
        std::sort(members.begin(), members.end(), [](const Member& a, const Member& b) {
            return std::tie(a.weight, a.slant, a.width, a.style) <
                   std::tie(b.weight, b.slant, b.width, b.style);
        });
    }
    if (fonts != nullptr) {
        FcFontSetDestroy(fonts);
    }
    FcObjectSetDestroy(objects);
    FcPatternDestroy(all);
}

std::vector<std::string> FontconfigCatalog::availableFontFamilies() const
{
    if (config_ != nullptr && newestFontFolderTime(config_) != foldersTime_) {
        FcConfigDestroy(config_);
        config_ = nullptr;
        loaded_ = false;
        families_.clear();
        byFontName_.clear();
    }
    loadIfNeeded();
    std::vector<std::string> names;
    for (const auto& [family, members] : families_) {
        names.push_back(family);
    }
    return names;
}

std::vector<std::string>
FontconfigCatalog::availableMembersOfFontFamily(const std::string& family) const
{
    loadIfNeeded();
    std::vector<std::string> names;
    if (const auto found = families_.find(family); found != families_.end()) {
        for (const Member& member : found->second) {
            names.push_back(member.fontName);
        }
    }
    return names;
}

std::optional<Font> FontconfigCatalog::fontWithName(const std::string& fontName, double size) const
{
    loadIfNeeded();
    const auto found = byFontName_.find(fontName);
    if (found == byFontName_.end()) {
        return std::nullopt;
    }
    const Member& member = found->second;
    return Font(member.fontName, member.displayName, member.family, size);
}

} // namespace vexto
