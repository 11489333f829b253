#include "foundation/XmlPropertyListReader.hpp"

#include "foundation/Base64.hpp"
#include "foundation/TextEncoding.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <vector>

namespace vexto {

namespace {

constexpr std::string_view notAPropertyList = "not a property list";

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool equalsIgnoringCase(std::string_view a, std::string_view b)
{
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        const auto lower = [](char c) {
            return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
        };
        if (lower(a[i]) != lower(b[i])) {
            return false;
        }
    }
    return true;
}

// Decimal or "0x" hexadecimal, clamped to the 64-bit signed range.
std::optional<std::int64_t> parseInteger(std::string_view text)
{
    text = trimmed(text);
    bool negative = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    int base = 10;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        base = 16;
        text.remove_prefix(2);
    }
    std::uint64_t magnitude = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), magnitude, base);
    if (text.empty() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (error == std::errc::result_out_of_range || magnitude > largest) {
        return negative ? std::numeric_limits<std::int64_t>::min()
                        : std::numeric_limits<std::int64_t>::max();
    }
    const auto value = static_cast<std::int64_t>(magnitude);
    return negative ? -value : value;
}

// Locale-independent, as the format is: "0.5", "-1e-3", "nan", "+infinity".
std::optional<double> parseReal(std::string_view text)
{
    text = trimmed(text);
    bool negative = false;
    std::string_view unsigned_ = text;
    if (!unsigned_.empty() && (unsigned_.front() == '-' || unsigned_.front() == '+')) {
        negative = unsigned_.front() == '-';
        unsigned_.remove_prefix(1);
    }
    if (equalsIgnoringCase(unsigned_, "nan")) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    if (equalsIgnoringCase(unsigned_, "inf") || equalsIgnoringCase(unsigned_, "infinity")) {
        return negative ? -HUGE_VAL : HUGE_VAL;
    }
    double value = 0.0;
    const char* last = unsigned_.data() + unsigned_.size();
    const auto [end, error] =
        std::from_chars(unsigned_.data(), last, value, std::chars_format::general);
    if (unsigned_.empty() || end != last) {
        return std::nullopt;
    }
    if (error == std::errc::result_out_of_range) {
        // Too large, or too small to tell from zero: the exponent's sign says which.
        const auto exponent = unsigned_.find_first_of("eE");
        const bool tiny = exponent != std::string_view::npos && exponent + 1 < unsigned_.size() &&
                          unsigned_[exponent + 1] == '-';
        value = tiny ? 0.0 : HUGE_VAL;
    }
    return negative ? -value : value;
}

// Days from 1970-01-01 to the given day of the proleptic Gregorian calendar.
std::int64_t daysFromCivil(std::int64_t year, unsigned month, unsigned day)
{
    year -= month <= 2 ? 1 : 0;
    const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
    const auto yearOfEra = static_cast<unsigned>(year - era * 400);
    const unsigned dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const unsigned dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + static_cast<std::int64_t>(dayOfEra) - 719468;
}

// "2001-01-01T00:00:00Z", optionally with fractions of a second, as seconds since that moment.
std::optional<PlistDate> parseDate(std::string_view text)
{
    text = trimmed(text);
    const auto field = [&](std::size_t at, std::size_t width, unsigned& value) {
        if (at + width > text.size()) {
            return false;
        }
        const auto [end, error] =
            std::from_chars(text.data() + at, text.data() + at + width, value, 10);
        return error == std::errc() && end == text.data() + at + width;
    };
    unsigned year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    if (text.size() < 20 || text[4] != '-' || text[7] != '-' || text[10] != 'T' ||
        text[13] != ':' || text[16] != ':' || text.back() != 'Z' || !field(0, 4, year) ||
        !field(5, 2, month) || !field(8, 2, day) || !field(11, 2, hour) || !field(14, 2, minute) ||
        !field(17, 2, second) || month < 1 || month > 12 || day < 1 || day > 31 || hour > 23 ||
        minute > 59 || second > 60) {
        return std::nullopt;
    }
    // Fractions of a second are read past: dates are kept to the second, as the format writes
    // them.
    if (text.size() > 20) {
        const std::string_view digits = text.substr(19, text.size() - 20);
        const bool allDigits = std::all_of(digits.begin() + 1, digits.end(),
                                           [](char c) { return c >= '0' && c <= '9'; });
        if (digits.size() < 2 || digits[0] != '.' || !allDigits) {
            return std::nullopt;
        }
    }
    const std::int64_t unixSeconds =
        daysFromCivil(year, month, day) * 86400 + hour * 3600 + minute * 60 + second;
    const std::int64_t seconds =
        unixSeconds - static_cast<std::int64_t>(PlistDate::unixTimeOfReferenceDate);
    if (static_cast<double>(seconds) < PlistDate::earliestSeconds ||
        static_cast<double>(seconds) > PlistDate::latestSeconds) {
        return std::nullopt;
    }
    return PlistDate{static_cast<double>(seconds)};
}

enum class ContainerKind { Plist, Array, Dictionary };

struct Container {
    ContainerKind kind;
    PlistValue value;               // the array or dictionary; for the plist element, an array
    std::optional<std::string> key; // a dictionary's key still waiting for its value
};

std::string_view tagOf(ContainerKind kind)
{
    switch (kind) {
    case ContainerKind::Plist:
        return "plist";
    case ContainerKind::Array:
        return "array";
    case ContainerKind::Dictionary:
        return "dict";
    }
    return {};
}

class Parser {
public:
    Parser(std::string_view text, const XmlPropertyListReader::Limits& limits)
        : text_(text), limits_(limits)
    {}

    XmlPropertyListReader::Result run()
    {
        if (text_.starts_with("\xEF\xBB\xBF")) {
            pos_ = 3;
        }
        while (error_.empty()) {
            if (!skipMarkupAndSpace()) {
                break;
            }
            if (pos_ == text_.size()) {
                if (!stack_.empty() || !root_) {
                    fail(notAPropertyList);
                }
                break;
            }
            if (text_[pos_] != '<') {
                fail(notAPropertyList);
            } else if (startsWith("</")) {
                closeElement();
            } else {
                openElement();
            }
        }
        if (!error_.empty()) {
            return {std::nullopt, error_};
        }
        return {std::move(root_), {}};
    }

private:
    bool fail(std::string_view reason)
    {
        if (error_.empty()) {
            error_ = reason;
        }
        return false;
    }

    bool startsWith(std::string_view prefix) const
    {
        return text_.substr(pos_).starts_with(prefix);
    }

    // Moves past `closing`, which must come after `pos_`.
    bool skipPast(std::string_view closing)
    {
        const auto end = text_.find(closing, pos_);
        if (end == std::string_view::npos) {
            return fail(notAPropertyList);
        }
        pos_ = end + closing.size();
        return true;
    }

    void skipSpace()
    {
        while (pos_ < text_.size() && isSpace(text_[pos_])) {
            ++pos_;
        }
    }

    // White space, the XML declaration and other processing instructions, comments and the
    // DOCTYPE, wherever they stand.
    bool skipMarkupAndSpace()
    {
        for (;;) {
            skipSpace();
            if (startsWith("<?")) {
                if (!skipPast("?>")) {
                    return false;
                }
            } else if (startsWith("<!--")) {
                pos_ += 4;
                if (!skipPast("-->")) {
                    return false;
                }
            } else if (startsWith("<!DOCTYPE")) {
                if (!skipDoctype()) {
                    return false;
                }
            } else {
                return true;
            }
        }
    }

    // Skips an internal subset in brackets too; its entity declarations are not honoured.
    bool skipDoctype()
    {
        char quote = 0;
        int brackets = 0;
        for (pos_ += 9; pos_ < text_.size(); ++pos_) {
            const char c = text_[pos_];
            if (quote != 0) {
                quote = c == quote ? 0 : quote;
            } else if (c == '"' || c == '\'') {
                quote = c;
            } else if (c == '[') {
                ++brackets;
            } else if (c == ']') {
                --brackets;
            } else if (c == '>' && brackets <= 0) {
                ++pos_;
                return true;
            }
        }
        return fail(notAPropertyList);
    }

    std::string_view name()
    {
        const std::size_t start = pos_;
        while (pos_ < text_.size()) {
            const char c = text_[pos_];
            const bool nameCharacter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                                       (c >= '0' && c <= '9') || c == '_' || c == ':' || c == '-' ||
                                       c == '.';
            if (!nameCharacter) {
                break;
            }
            ++pos_;
        }
        return text_.substr(start, pos_ - start);
    }

    // Moves past the attributes to the end of the opening tag; none when it never ends.
    std::optional<bool> skipAttributesTellingIfEmpty()
    {
        char quote = 0;
        for (; pos_ < text_.size(); ++pos_) {
            const char c = text_[pos_];
            if (quote != 0) {
                quote = c == quote ? 0 : quote;
            } else if (c == '"' || c == '\'') {
                quote = c;
            } else if (c == '<') {
                break;
            } else if (c == '>') {
                const bool empty = text_[pos_ - 1] == '/';
                ++pos_;
                return empty;
            }
        }
        fail(notAPropertyList);
        return std::nullopt;
    }

    void openElement()
    {
        ++pos_;
        const std::string_view tag = name();
        const auto empty = skipAttributesTellingIfEmpty();
        if (!empty || tag.empty()) {
            fail(notAPropertyList);
            return;
        }
        if (tag == "plist") {
            openPlist(*empty);
        } else if (tag == "array" || tag == "dict") {
            openContainer(tag == "array" ? ContainerKind::Array : ContainerKind::Dictionary,
                          *empty);
        } else if (tag == "true" || tag == "false") {
            const auto content = *empty ? std::optional<std::string>("") : contentOf(tag);
            if (content && trimmed(*content).empty()) {
                deliver(PlistValue(tag == "true"));
            } else {
                fail(notAPropertyList);
            }
        } else {
            openLeaf(tag, *empty);
        }
    }

    void openPlist(bool empty)
    {
        if (sawPlist_ || !stack_.empty() || root_ || empty) {
            fail(notAPropertyList);
            return;
        }
        sawPlist_ = true;
        stack_.push_back({ContainerKind::Plist, PlistArray{}, std::nullopt});
    }

    void openContainer(ContainerKind kind, bool empty)
    {
        const PlistValue value =
            kind == ContainerKind::Array ? PlistValue(PlistArray{}) : PlistValue(PlistDictionary{});
        if (empty) {
            deliver(value);
            return;
        }
        if (++containerDepth_ > limits_.maximumNesting) {
            fail("nested deeper than " + std::to_string(limits_.maximumNesting) + " levels");
            return;
        }
        stack_.push_back({kind, value, std::nullopt});
    }

    void openLeaf(std::string_view tag, bool empty)
    {
        std::optional<std::string> content =
            empty ? std::optional<std::string>("") : contentOf(tag);
        if (!content) {
            return;
        }
        if (tag == "key") {
            if (validText(*content)) {
                takeKey(std::move(*content));
            }
        } else if (tag == "string") {
            if (validText(*content)) {
                deliver(PlistValue(std::move(*content)));
            }
        } else if (tag == "integer") {
            deliverParsed(parseInteger(*content));
        } else if (tag == "real") {
            deliverParsed(parseReal(*content));
        } else if (tag == "date") {
            deliverParsed(parseDate(*content));
        } else if (tag == "data") {
            deliverParsed(Base64::decode(*content));
        } else {
            fail(notAPropertyList);
        }
    }

    template <typename T> void deliverParsed(std::optional<T> value)
    {
        if (!value) {
            fail(notAPropertyList);
            return;
        }
        deliver(PlistValue(std::move(*value)));
    }

    bool validText(const std::string& text)
    {
        if (text.find('\0') != std::string::npos) {
            return fail("text holds a NUL character");
        }
        if (!TextEncoding::isValidUtf8(text)) {
            return fail("text is not valid UTF-8");
        }
        return true;
    }

    void takeKey(std::string key)
    {
        if (stack_.empty() || stack_.back().kind != ContainerKind::Dictionary ||
            stack_.back().key) {
            fail(notAPropertyList);
            return;
        }
        stack_.back().key = std::move(key);
    }

    void closeElement()
    {
        pos_ += 2;
        const std::string_view tag = name();
        skipSpace();
        if (pos_ >= text_.size() || text_[pos_] != '>' || stack_.empty() ||
            tag != tagOf(stack_.back().kind) || stack_.back().key) {
            fail(notAPropertyList);
            return;
        }
        ++pos_;
        Container closed = std::move(stack_.back());
        stack_.pop_back();
        if (closed.kind == ContainerKind::Plist) {
            PlistArray& held = *closed.value.asArray();
            if (held.size() != 1 || root_) {
                fail(notAPropertyList);
                return;
            }
            root_ = std::move(held.front());
            return;
        }
        --containerDepth_;
        deliver(std::move(closed.value));
    }

    void deliver(PlistValue value)
    {
        if (++values_ > limits_.maximumValues) {
            fail("holds more than " + std::to_string(limits_.maximumValues) + " values");
            return;
        }
        if (stack_.empty()) {
            if (root_) {
                fail(notAPropertyList);
                return;
            }
            root_ = std::move(value);
            return;
        }
        Container& top = stack_.back();
        switch (top.kind) {
        case ContainerKind::Dictionary:
            if (!top.key) {
                fail(notAPropertyList);
                return;
            }
            top.value.asDictionary()->insert_or_assign(std::move(*top.key), std::move(value));
            top.key.reset();
            return;
        case ContainerKind::Plist:
            if (!top.value.asArray()->empty()) {
                fail(notAPropertyList);
                return;
            }
            [[fallthrough]];
        case ContainerKind::Array:
            top.value.asArray()->push_back(std::move(value));
            return;
        }
    }

    // The text up to the element's closing tag, with entities replaced and CDATA sections taken
    // as they are. None when the element holds anything else or never closes.
    std::optional<std::string> contentOf(std::string_view tag)
    {
        std::string content;
        for (;;) {
            const auto open = text_.find('<', pos_);
            if (open == std::string_view::npos) {
                fail(notAPropertyList);
                return std::nullopt;
            }
            if (!appendUnescaped(text_.substr(pos_, open - pos_), content)) {
                return std::nullopt;
            }
            pos_ = open;
            if (startsWith("<![CDATA[")) {
                const auto end = text_.find("]]>", pos_ + 9);
                if (end == std::string_view::npos) {
                    fail(notAPropertyList);
                    return std::nullopt;
                }
                content.append(text_.substr(pos_ + 9, end - pos_ - 9));
                pos_ = end + 3;
            } else if (startsWith("<!--")) {
                pos_ += 4;
                if (!skipPast("-->")) {
                    return std::nullopt;
                }
            } else if (startsWith("</")) {
                pos_ += 2;
                const bool matches = name() == tag;
                skipSpace();
                if (!matches || pos_ >= text_.size() || text_[pos_] != '>') {
                    fail(notAPropertyList);
                    return std::nullopt;
                }
                ++pos_;
                return content;
            } else {
                fail(notAPropertyList);
                return std::nullopt;
            }
        }
    }

    bool appendUnescaped(std::string_view text, std::string& out)
    {
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] != '&') {
                out += text[i];
                continue;
            }
            const auto semicolon = text.find(';', i);
            if (semicolon == std::string_view::npos) {
                return fail(notAPropertyList);
            }
            const auto codePoint = entityValue(text.substr(i + 1, semicolon - i - 1));
            if (!codePoint) {
                return fail(notAPropertyList);
            }
            TextEncoding::appendUtf8(out, *codePoint);
            i = semicolon;
        }
        return true;
    }

    static std::optional<char32_t> entityValue(std::string_view entity)
    {
        if (entity == "amp") {
            return U'&';
        }
        if (entity == "lt") {
            return U'<';
        }
        if (entity == "gt") {
            return U'>';
        }
        if (entity == "quot") {
            return U'"';
        }
        if (entity == "apos") {
            return U'\'';
        }
        if (entity.size() < 2 || entity.front() != '#') {
            return std::nullopt;
        }
        entity.remove_prefix(1);
        int base = 10;
        if (entity.front() == 'x' || entity.front() == 'X') {
            base = 16;
            entity.remove_prefix(1);
        }
        std::uint32_t value = 0;
        const auto [end, error] =
            std::from_chars(entity.data(), entity.data() + entity.size(), value, base);
        const bool character = value > 0 && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
        if (entity.empty() || error != std::errc() || end != entity.data() + entity.size() ||
            !character) {
            return std::nullopt;
        }
        return static_cast<char32_t>(value);
    }

    std::string_view text_;
    const XmlPropertyListReader::Limits& limits_;
    std::size_t pos_ = 0;
    std::vector<Container> stack_;
    std::optional<PlistValue> root_;
    bool sawPlist_ = false;
    int containerDepth_ = 0;
    std::size_t values_ = 0;
    std::string error_;
};

} // namespace

XmlPropertyListReader::Result XmlPropertyListReader::read(std::string_view text,
                                                          const Limits& limits)
{
    return Parser(text, limits).run();
}

} // namespace vexto
