#pragma once

#include <string>
#include <vector>

namespace vexto {

// Which localisation folders (".lproj") to look in, most preferred first.
class Localization {
public:
    // From LC_ALL, LC_MESSAGES or LANG (the first that is set), always ending with English.
    static std::vector<std::string> preferredLocalizationFolders();
    // The same for a given locale name such as "de_DE.UTF-8".
    static std::vector<std::string> localizationFoldersForLocale(const std::string& locale);
};

} // namespace vexto
