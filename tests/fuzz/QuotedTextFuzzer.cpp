// Any bytes as a text to quote: what comes out is UTF-8 that a terminal cannot act on, and reads
// back, escape by escape, as the text that went in (invalid bytes as U+FFFD).
#include "foundation/QuotedText.hpp"
#include "foundation/TextEncoding.hpp"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

using namespace vexto;

namespace {

[[noreturn]] void fail(const char* why)
{
    std::fprintf(stderr, "%s\n", why);
    std::abort();
}

std::string unquoted(std::string_view quoted)
{
    if (quoted.size() < 2 || quoted.front() != '"' || quoted.back() != '"') {
        fail("not between double quotes");
    }
    std::string out;
    for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
        const char c = quoted[i];
        if (c == '"') {
            fail("an unescaped quote inside");
        }
        if (c != '\\') {
            out += c;
            continue;
        }
        if (++i + 1 >= quoted.size()) {
            fail("a lone backslash at the end");
        }
        switch (quoted[i]) {
        case '"':
        case '\\':
            out += quoted[i];
            break;
        case 'n':
            out += '\n';
            break;
        case 'r':
            out += '\r';
            break;
        case 't':
            out += '\t';
            break;
        case 'u': {
            if (i + 5 >= quoted.size()) {
                fail("a short \\u escape");
            }
            const std::string hex(quoted.substr(i + 1, 4));
            TextEncoding::appendUtf8(out,
                                     static_cast<char32_t>(std::strtoul(hex.c_str(), nullptr, 16)));
            i += 4;
            break;
        }
        default:
            fail("an unknown escape");
        }
    }
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string quoted = QuotedText::quoted(text);
    if (!TextEncoding::isValidUtf8(quoted)) {
        fail("the quoted text is not UTF-8");
    }
    for (std::size_t pos = 0; pos < quoted.size();) {
        const char32_t c = TextEncoding::nextCodePoint(quoted, pos);
        if (c < 0x20 || (c >= 0x7F && c <= 0x9F) || (c >= 0x202A && c <= 0x202E)) {
            fail("a control character left raw");
        }
    }
    // Valid input comes back as it was; invalid bytes come back as U+FFFD.
    const std::string expected = TextEncoding::utf8FromUtf16(TextEncoding::utf16FromUtf8(text));
    if (unquoted(quoted) != expected) {
        fail("the quoted text does not read back as the text");
    }
    return 0;
}
