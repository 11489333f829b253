#pragma once

#include "foundation/PlistValue.hpp"
#include "foundation/StringsTable.hpp"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexto {

// A bundle folder laid out as the platform lays them out: Contents/Info.plist and
// Contents/Resources with one ".lproj" folder per language.
class Bundle {
public:
    explicit Bundle(std::string path);

    const std::string& bundlePath() const { return path_; }
    std::string resourcePath() const;

    // The information dictionary read afresh from disk at every call, so that a bundle replaced
    // while the pane runs reports its new version; none when missing or unreadable.
    std::optional<PlistDictionary> uncachedPreferencePaneInfo() const;
    // A string value of the information dictionary, or none.
    std::optional<std::string> infoString(std::string_view key) const;
    // The resources whose names end in "." + type, by name.
    std::vector<std::string> pathsForResourcesOfType(std::string_view type) const;
    // The resources folder + the file name; whether the file exists is not checked.
    std::string pathForUncachedPreferencePaneResourceFile(std::string_view name) const;

    // The localised text for the key from the table ("Localizable" by default) of the first
    // preferred language that has one; `value`, or the key itself when `value` is empty, if none.
    std::string localizedString(std::string_view key, std::string_view value = {},
                                std::string_view table = "Localizable") const;

private:
    const StringsTable* stringsTable(std::string_view table) const;

    std::string path_;
    // Tables are read once; a missing table is remembered as an empty one.
    mutable std::map<std::string, std::optional<StringsTable>, std::less<>> tables_;
};

} // namespace vexto
