#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vexto {

// Conversions between the UTF-8 the pane keeps its texts in and the UTF-16 that the platform's
// strings, keyboard layouts and string tables use.
class TextEncoding {
public:
    // Decodes UTF-8; invalid sequences become U+FFFD.
    static std::u16string utf16FromUtf8(std::string_view text);
    // Encodes UTF-16; unpaired surrogates become U+FFFD.
    static std::string utf8FromUtf16(std::u16string_view text);
    static bool isValidUtf8(std::string_view text);
    // Appends one code point as UTF-8.
    static void appendUtf8(std::string& out, char32_t codePoint);
    // The code point at `pos`, which moves past it; an invalid sequence gives U+FFFD and moves
    // one byte on. `pos` must be within the text.
    static char32_t nextCodePoint(std::string_view text, std::size_t& pos);
};

} // namespace vexto
