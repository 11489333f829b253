#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vexto {

// Which localisation folders (".lproj") to look in, most preferred first.
class Localization {
public:
    // From LC_ALL, LC_MESSAGES or LANG (the first that is set), always ending with English.
    static std::vector<std::string> preferredLocalizationFolders();
    // The locale named by LC_ALL, LC_MESSAGES or LANG (the first that is set); empty when none.
    static std::string_view preferredLocale();
    // The same for a given locale name such as "de_DE.UTF-8".
    static std::vector<std::string> localizationFoldersForLocale(const std::string& locale);

    // The locale "x-pseudo" shows every text accented and 40% longer, with its format
    // directives intact, so that clipped or overlapping texts show before a translation does.
    static bool isPseudoLocale();
    static std::string pseudoLocalized(std::string_view text);

    // Told of every text asked for that the strings table does not hold; none: nobody is.
    using MissingTranslationObserver = std::function<void(std::string_view key)>;
    static void setMissingTranslationObserver(MissingTranslationObserver observer);
    static void noteMissingTranslation(std::string_view key);
};

} // namespace vexto
