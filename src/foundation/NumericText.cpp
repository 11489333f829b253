#include "foundation/NumericText.hpp"

#include <charconv>
#include <limits>

namespace vexto {

namespace {

bool isWhiteSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::string_view withoutLeadingWhiteSpace(std::string_view text)
{
    std::size_t i = 0;
    while (i < text.size() && isWhiteSpace(text[i])) {
        ++i;
    }
    return text.substr(i);
}

} // namespace

std::int64_t NumericText::leadingInteger(std::string_view text)
{
    text = withoutLeadingWhiteSpace(text);
    bool negative = false;
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
        negative = text[0] == '-';
        text.remove_prefix(1);
    }
    constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
    std::int64_t magnitude = 0;
    for (char c : text) {
        if (!isDigit(c)) {
            break;
        }
        const int digit = c - '0';
        if (magnitude > (highest - digit) / 10) {
            return negative ? std::numeric_limits<std::int64_t>::min() : highest;
        }
        magnitude = magnitude * 10 + digit;
    }
    return negative ? -magnitude : magnitude;
}

bool NumericText::leadingBoolean(std::string_view text)
{
    text = withoutLeadingWhiteSpace(text);
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
        text.remove_prefix(1);
    }
    while (!text.empty() && text[0] == '0') {
        text.remove_prefix(1);
    }
    if (text.empty()) {
        return false;
    }
    const char c = text[0];
    return c == 'Y' || c == 'y' || c == 'T' || c == 't' || (c >= '1' && c <= '9');
}

double NumericText::leadingReal(std::string_view text)
{
    text = withoutLeadingWhiteSpace(text);
    if (!text.empty() && text[0] == '+') {
        text.remove_prefix(1);
    }
    // Only decimal text counts: "inf", "nan" and hexadecimal forms read as 0 like any other word.
    const std::size_t first = (!text.empty() && text[0] == '-') ? 1 : 0;
    if (first >= text.size() || !(isDigit(text[first]) || text[first] == '.')) {
        return 0.0;
    }
    double value = 0.0;
    const auto result =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::general);
    if (result.ec == std::errc::result_out_of_range) {
        return (!text.empty() && text[0] == '-') ? -std::numeric_limits<double>::infinity()
                                                 : std::numeric_limits<double>::infinity();
    }
    return result.ec == std::errc() ? value : 0.0;
}

std::string NumericText::shortestText(double value)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

std::string NumericText::shortestText(float value)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

std::optional<double> NumericText::wholeReal(std::string_view text)
{
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

} // namespace vexto
