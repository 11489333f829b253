#include "foundation/Localization.hpp"

#include <algorithm>
#include <cstdlib>

namespace vexto {

namespace {

void addOnce(std::vector<std::string>& folders, const std::string& name)
{
    const std::string folder = name + ".lproj";
    if (!name.empty() && std::find(folders.begin(), folders.end(), folder) == folders.end()) {
        folders.push_back(folder);
    }
}

} // namespace

std::vector<std::string> Localization::localizationFoldersForLocale(const std::string& locale)
{
    std::vector<std::string> folders;
    // "de_DE.UTF-8@euro" names the language "de" and the region "DE".
    std::string name = locale.substr(0, locale.find_first_of(".@"));
    if (!name.empty() && name != "C" && name != "POSIX") {
        addOnce(folders, name);
        std::string hyphenated = name;
        std::replace(hyphenated.begin(), hyphenated.end(), '_', '-');
        addOnce(folders, hyphenated);
        addOnce(folders, name.substr(0, name.find_first_of("_-")));
    }
    addOnce(folders, "en");
    addOnce(folders, "English");
    return folders;
}

std::vector<std::string> Localization::preferredLocalizationFolders()
{
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const char* value = std::getenv(variable); value != nullptr && *value != '\0') {
            return localizationFoldersForLocale(value);
        }
    }
    return localizationFoldersForLocale("");
}

} // namespace vexto
