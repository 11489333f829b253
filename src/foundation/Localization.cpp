#include "foundation/Localization.hpp"

#include <algorithm>
#include <array>
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

Localization::MissingTranslationObserver& missingTranslationObserver()
{
    static Localization::MissingTranslationObserver observer;
    return observer;
}

// Accented stand-ins for plain letters: as wide or wider, and plainly not English.
const char* accented(char c)
{
    switch (c) {
    case 'a':
        return "á";
    case 'e':
        return "é";
    case 'i':
        return "î";
    case 'o':
        return "ö";
    case 'u':
        return "ü";
    case 'c':
        return "ç";
    case 'n':
        return "ñ";
    case 's':
        return "š";
    case 'y':
        return "ý";
    case 'A':
        return "Å";
    case 'E':
        return "É";
    case 'O':
        return "Ö";
    case 'U':
        return "Ü";
    case 'S':
        return "Š";
    default:
        return nullptr;
    }
}

// The length of a format directive at the text's start ("%@", "%1d", "%lu", "%%"), else 0.
std::size_t directiveLength(std::string_view text)
{
    if (text.size() < 2 || text[0] != '%') {
        return 0;
    }
    std::size_t end = 1;
    while (end < text.size() &&
           std::string_view("0123456789$.lh").find(text[end]) != std::string_view::npos) {
        ++end;
    }
    return end < text.size() ? end + 1 : 0;
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
    return localizationFoldersForLocale(std::string(preferredLocale()));
}

std::string_view Localization::preferredLocale()
{
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const char* value = std::getenv(variable); value != nullptr && *value != '\0') {
            return value;
        }
    }
    return {};
}

bool Localization::isPseudoLocale()
{
    // Asked for every text shown: the locale's name is read, no folder list is built.
    const std::string_view locale = preferredLocale();
    return locale.substr(0, locale.find_first_of(".@")) == "x-pseudo";
}

std::string Localization::pseudoLocalized(std::string_view text)
{
    if (text.empty()) {
        return {};
    }
    std::string result = "[";
    std::size_t characters = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (const std::size_t directive = directiveLength(text.substr(i))) {
            result.append(text.substr(i, directive));
            i += directive;
            characters += 2;
            continue;
        }
        const char c = text[i++];
        if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
            ++characters; // counts each UTF-8 sequence once
        }
        const char* stand = accented(c);
        result += stand != nullptr ? stand : std::string(1, c);
    }
    // Brackets included, 40% more characters than the text has, of an ordinary mix of widths.
    static constexpr std::array<std::string_view, 8> filler = {"ŵ", "ö", "ŕ", "đ",
                                                               "š", "ĥ", "é", "ñ"};
    const std::size_t padding = (characters * 4 + 9) / 10;
    for (std::size_t added = 2; added < padding; ++added) {
        result += filler[added % filler.size()];
    }
    return result + "]";
}

void Localization::setMissingTranslationObserver(MissingTranslationObserver observer)
{
    missingTranslationObserver() = std::move(observer);
}

void Localization::noteMissingTranslation(std::string_view key)
{
    if (missingTranslationObserver()) {
        missingTranslationObserver()(key);
    }
}

} // namespace vexto
