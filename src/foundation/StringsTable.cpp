#include "foundation/StringsTable.hpp"

#include "foundation/FileSystem.hpp"
#include "foundation/TextEncoding.hpp"

#include <algorithm>

namespace vexto {

namespace {

constexpr std::size_t maximumTableBytes = 4 * 1024 * 1024;

std::string utf8Text(std::span<const std::uint8_t> bytes)
{
    const bool littleEndian = bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE;
    const bool bigEndian = bytes.size() >= 2 && bytes[0] == 0xFE && bytes[1] == 0xFF;
    if (littleEndian || bigEndian) {
        std::u16string units;
        for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
            units += static_cast<char16_t>(littleEndian ? bytes[i] | (bytes[i + 1] << 8)
                                                        : (bytes[i] << 8) | bytes[i + 1]);
        }
        return TextEncoding::utf8FromUtf16(units);
    }
    std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    return std::string(text);
}

bool isUnquotedCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '$' || c == '+' || c == '/' || c == ':' || c == '.' || c == '-';
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

} // namespace

class StringsTableParser {
public:
    explicit StringsTableParser(std::string text) : text_(std::move(text)) {}

    std::optional<StringsTable> parse()
    {
        StringsTable table;
        for (;;) {
            if (!skipSpaceAndComments()) {
                return std::nullopt;
            }
            if (pos_ >= text_.size()) {
                return table;
            }
            std::string key;
            std::string value;
            if (!token(key) || !skipSpaceAndComments()) {
                return std::nullopt;
            }
            if (peek() == '=') {
                ++pos_;
                if (!skipSpaceAndComments() || !token(value) || !skipSpaceAndComments()) {
                    return std::nullopt;
                }
            } else {
                value = key; // `"key";` stands for `"key" = "key";`
            }
            if (peek() != ';') {
                return std::nullopt;
            }
            ++pos_;
            table.entries_.insert_or_assign(std::move(key), std::move(value));
        }
    }

private:
    char peek() const { return pos_ < text_.size() ? text_[pos_] : '\0'; }

    bool skipSpaceAndComments()
    {
        while (pos_ < text_.size()) {
            const char c = text_[pos_];
            if (c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v') {
                ++pos_;
            } else if (text_.compare(pos_, 2, "//") == 0) {
                const auto end = text_.find('\n', pos_);
                pos_ = end == std::string::npos ? text_.size() : end + 1;
            } else if (text_.compare(pos_, 2, "/*") == 0) {
                const auto end = text_.find("*/", pos_ + 2);
                if (end == std::string::npos) {
                    return false; // an unterminated comment
                }
                pos_ = end + 2;
            } else {
                break;
            }
        }
        return true;
    }

    bool token(std::string& out)
    {
        if (peek() == '"') {
            ++pos_;
            return quoted(out);
        }
        const std::size_t start = pos_;
        while (pos_ < text_.size() && isUnquotedCharacter(text_[pos_])) {
            ++pos_;
        }
        out = text_.substr(start, pos_ - start);
        return !out.empty();
    }

    bool quoted(std::string& out)
    {
        std::u16string pendingUnits; // \U escapes, joined so that surrogate pairs combine
        const auto flushUnits = [&] {
            if (!pendingUnits.empty()) {
                out += TextEncoding::utf8FromUtf16(pendingUnits);
                pendingUnits.clear();
            }
        };
        while (pos_ < text_.size()) {
            // A run of plain characters goes in whole.
            const std::size_t special = std::min(text_.find_first_of("\"\\", pos_), text_.size());
            if (special > pos_) {
                flushUnits();
                out.append(text_, pos_, special - pos_);
                pos_ = special;
                continue;
            }
            if (text_[pos_++] == '"') {
                flushUnits();
                return true;
            }
            if (pos_ >= text_.size()) {
                return false;
            }
            const char escaped = text_[pos_++];
            if (escaped == 'U' || escaped == 'u') {
                char16_t unit = 0;
                if (!hexUnit(unit)) {
                    return false;
                }
                pendingUnits += unit;
                continue;
            }
            flushUnits();
            out += simpleEscape(escaped);
        }
        return false; // an unterminated string
    }

    bool hexUnit(char16_t& unit)
    {
        if (text_.size() - pos_ < 4) {
            return false;
        }
        unsigned value = 0;
        for (int i = 0; i < 4; ++i) {
            const int digit = hexDigit(text_[pos_++]);
            if (digit < 0) {
                return false;
            }
            value = value * 16 + static_cast<unsigned>(digit);
        }
        unit = static_cast<char16_t>(value);
        return true;
    }

    std::string simpleEscape(char escaped)
    {
        switch (escaped) {
        case 'n':
            return "\n";
        case 't':
            return "\t";
        case 'r':
            return "\r";
        case 'a':
            return "\a";
        case 'b':
            return "\b";
        case 'f':
            return "\f";
        case 'v':
            return "\v";
        default:
            break;
        }
        if (escaped >= '0' && escaped <= '7') {
            unsigned value = static_cast<unsigned>(escaped - '0');
            for (int i = 0; i < 2 && peek() >= '0' && peek() <= '7'; ++i) {
                value = value * 8 + static_cast<unsigned>(text_[pos_++] - '0');
            }
            std::string out;
            TextEncoding::appendUtf8(out, value);
            return out;
        }
        return std::string(1, escaped); // \" \\ \' and any other character stand for themselves
    }

    std::string text_;
    std::size_t pos_ = 0;
};

std::optional<StringsTable> StringsTable::parse(std::span<const std::uint8_t> bytes)
{
    return StringsTableParser(utf8Text(bytes)).parse();
}

std::optional<StringsTable> StringsTable::load(const std::string& path, std::string* problem)
{
    std::string reason;
    const auto bytes = FileSystem::readFile(path, maximumTableBytes, &reason);
    auto table = bytes ? parse(*bytes) : std::nullopt;
    if (!table && problem != nullptr) {
        *problem = bytes ? "not a strings table" : "cannot be read (" + reason + ")";
    }
    return table;
}

const std::string* StringsTable::find(std::string_view key) const
{
    const auto found = entries_.find(key);
    return found != entries_.end() ? &found->second : nullptr;
}

} // namespace vexto
