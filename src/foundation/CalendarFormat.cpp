#include "foundation/CalendarFormat.hpp"

#include <ctime>
#include <langinfo.h>
#include <locale.h>

namespace vexto {

namespace {

// The user's time conventions (LC_ALL, LC_TIME, LANG), or the C locale's when they name a
// locale this system does not have.
locale_t userTimeLocale()
{
    static locale_t locale = [] {
        locale_t user = ::newlocale(LC_TIME_MASK, "", nullptr);
        return user != nullptr ? user : ::newlocale(LC_TIME_MASK, "C", nullptr);
    }();
    return locale;
}

std::string number(int value, bool twoDigits)
{
    std::string text = std::to_string(value);
    return twoDigits && text.size() < 2 ? "0" + text : text;
}

std::string langinfo(nl_item item)
{
    const char* text = ::nl_langinfo_l(item, userTimeLocale());
    return text != nullptr ? text : "";
}

} // namespace

std::string CalendarFormat::format(std::string_view pattern, std::int64_t secondsSince1970)
{
    const auto moment = static_cast<std::time_t>(secondsSince1970);
    std::tm local{};
    if (::localtime_r(&moment, &local) == nullptr) {
        return {};
    }
    const int hour12 = local.tm_hour % 12 == 0 ? 12 : local.tm_hour % 12;
    std::string out;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != '%' || i + 1 == pattern.size()) {
            out += pattern[i];
            continue;
        }
        const bool unpadded = pattern[i + 1] == '1' && i + 2 < pattern.size();
        const char code = pattern[unpadded ? i + 2 : i + 1];
        std::string piece;
        switch (code) {
        case 'B':
            piece = langinfo(static_cast<nl_item>(MON_1 + local.tm_mon));
            break;
        case 'b':
            piece = langinfo(static_cast<nl_item>(ABMON_1 + local.tm_mon));
            break;
        case 'd':
            piece = number(local.tm_mday, !unpadded);
            break;
        case 'Y':
            piece = std::to_string(local.tm_year + 1900);
            break;
        case 'H':
            piece = number(local.tm_hour, !unpadded);
            break;
        case 'I':
            piece = number(hour12, !unpadded);
            break;
        case 'M':
            piece = number(local.tm_min, true);
            break;
        case 'p':
            piece = langinfo(local.tm_hour < 12 ? AM_STR : PM_STR);
            break;
        case '%':
            piece = "%";
            break;
        default:
            out += pattern[i];
            continue;
        }
        out += piece;
        i += unpadded ? 2 : 1;
    }
    return out;
}

} // namespace vexto
