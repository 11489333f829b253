#include "foundation/TextEncoding.hpp"

namespace vexto {

namespace {

constexpr char32_t replacementCharacter = 0xFFFD;

// Decodes one code point at `pos`, advancing it; an invalid sequence yields U+FFFD and consumes one
// byte.
char32_t decodeUtf8(std::string_view text, std::size_t& pos, bool& valid)
{
    const auto byte = [&](std::size_t i) {
        return static_cast<unsigned char>(text[i]);
    };
    const unsigned char lead = byte(pos);
    int length = 0;
    char32_t codePoint = 0;
    if (lead < 0x80) {
        ++pos;
        return lead;
    }
    if ((lead & 0xE0) == 0xC0) {
        length = 2;
        codePoint = lead & 0x1F;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3;
        codePoint = lead & 0x0F;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4;
        codePoint = lead & 0x07;
    } else {
        valid = false;
        ++pos;
        return replacementCharacter;
    }
    if (pos + length > text.size()) {
        valid = false;
        ++pos;
        return replacementCharacter;
    }
    for (int i = 1; i < length; ++i) {
        const unsigned char next = byte(pos + i);
        if ((next & 0xC0) != 0x80) {
            valid = false;
            ++pos;
            return replacementCharacter;
        }
        codePoint = (codePoint << 6) | (next & 0x3F);
    }
    static constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (codePoint < smallest[length] || codePoint > 0x10FFFF ||
        (codePoint >= 0xD800 && codePoint <= 0xDFFF)) {
        valid = false;
        ++pos;
        return replacementCharacter;
    }
    pos += length;
    return codePoint;
}

} // namespace

void TextEncoding::appendUtf8(std::string& out, char32_t codePoint)
{
    if (codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) {
        codePoint = replacementCharacter;
    }
    if (codePoint < 0x80) {
        out += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        out += static_cast<char>(0xC0 | (codePoint >> 6));
        out += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        out += static_cast<char>(0xE0 | (codePoint >> 12));
        out += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (codePoint & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (codePoint >> 18));
        out += static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (codePoint & 0x3F));
    }
}

char32_t TextEncoding::nextCodePoint(std::string_view text, std::size_t& pos)
{
    bool valid = true;
    return decodeUtf8(text, pos, valid);
}

std::u16string TextEncoding::utf16FromUtf8(std::string_view text)
{
    std::u16string out;
    out.reserve(text.size());
    bool valid = true;
    for (std::size_t pos = 0; pos < text.size();) {
        const char32_t codePoint = decodeUtf8(text, pos, valid);
        if (codePoint >= 0x10000) {
            const char32_t offset = codePoint - 0x10000;
            out += static_cast<char16_t>(0xD800 + (offset >> 10));
            out += static_cast<char16_t>(0xDC00 + (offset & 0x3FF));
        } else {
            out += static_cast<char16_t>(codePoint);
        }
    }
    return out;
}

std::string TextEncoding::utf8FromUtf16(std::u16string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
            text[i + 1] <= 0xDFFF) {
            appendUtf8(out, 0x10000 + ((char32_t(unit) - 0xD800) << 10) + (text[i + 1] - 0xDC00));
            ++i;
        } else {
            appendUtf8(out, unit);
        }
    }
    return out;
}

bool TextEncoding::isValidUtf8(std::string_view text)
{
    bool valid = true;
    for (std::size_t pos = 0; pos < text.size() && valid;) {
        decodeUtf8(text, pos, valid);
    }
    return valid;
}

} // namespace vexto
