#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vexto {

// How the platform's strings answer numeric questions: the leading number after white space,
// the rest of the text ignored, 0 (or false) when there is none.
class NumericText {
public:
    // Leading decimal integer after white space and an optional sign; clamps on overflow.
    static std::int64_t leadingInteger(std::string_view text);
    // True when the first significant character (after white space, an optional sign and
    // leading zeros) is Y, y, T, t or a digit 1-9.
    static bool leadingBoolean(std::string_view text);
    // Leading decimal real (digits, point, exponent) after white space; 0 when there is none.
    static double leadingReal(std::string_view text);
    // The text as a whole read as a decimal real, as people type numbers on a command line;
    // none when anything else is in it.
    static std::optional<double> wholeReal(std::string_view text);

    // The shortest text that reads back as exactly this number: "0.5", "-1", "0.96862745".
    static std::string shortestText(double value);
    static std::string shortestText(float value);
};

} // namespace vexto
