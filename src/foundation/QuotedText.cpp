#include "foundation/QuotedText.hpp"

#include "foundation/TextEncoding.hpp"

#include <cstdio>

namespace vexto {

namespace {

bool actsOnATerminalOrReordersText(char32_t c)
{
    return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0x200E || c == 0x200F ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

void appendEscaped(std::string& out, char32_t c)
{
    char escaped[8];
    std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(c));
    out += escaped;
}

} // namespace

std::string QuotedText::quoted(std::string_view utf8)
{
    std::string out = "\"";
    out.reserve(utf8.size() + 2);
    for (std::size_t pos = 0; pos < utf8.size();) {
        const char32_t c = TextEncoding::nextCodePoint(utf8, pos);
        switch (c) {
        case U'"':
            out += "\\\"";
            break;
        case U'\\':
            out += "\\\\";
            break;
        case U'\n':
            out += "\\n";
            break;
        case U'\r':
            out += "\\r";
            break;
        case U'\t':
            out += "\\t";
            break;
        default:
            if (actsOnATerminalOrReordersText(c)) {
                appendEscaped(out, c);
            } else {
                TextEncoding::appendUtf8(out, c);
            }
        }
    }
    return out + "\"";
}

} // namespace vexto
