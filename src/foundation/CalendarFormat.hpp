#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vexto {

// Formats a moment with a calendar format in the local time zone, with month names and AM/PM
// from the user's locale settings: %B and %b month names, %d and %1d (no leading zero) day,
// %Y year, %H hour, %I and %1I 12-hour hour, %M minutes, %p AM/PM, %% a percent sign.
// Anything else is copied as it stands.
class CalendarFormat {
public:
    static std::string format(std::string_view pattern, std::int64_t secondsSince1970);
};

} // namespace vexto
