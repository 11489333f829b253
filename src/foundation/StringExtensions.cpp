#include "foundation/StringExtensions.hpp"

#include "foundation/FileSystem.hpp"
#include "foundation/HomeDirectory.hpp"
#include "foundation/TextEncoding.hpp"

#include <algorithm>

namespace vexto {

namespace {

bool isWhiteSpaceOrNewline(char16_t c)
{
    static constexpr char16_t others[] = {0x0085, 0x00A0, 0x1680, 0x2028,
                                          0x2029, 0x202F, 0x205F, 0x3000};
    return (c >= 0x09 && c <= 0x0D) || c == 0x20 || (c >= 0x2000 && c <= 0x200A) ||
           std::find(std::begin(others), std::end(others), c) != std::end(others);
}

} // namespace

std::vector<std::string_view> splitString(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find(separator, at), text.size());
        parts.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return parts;
}

std::string asciiLowercased(std::string_view text)
{
    std::string out(text);
    for (char& c : out) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return out;
}

std::string trimmedString(std::string_view text)
{
    const std::u16string units = TextEncoding::utf16FromUtf8(text);
    std::size_t first = 0;
    std::size_t last = units.size();
    while (first < last && isWhiteSpaceOrNewline(units[first])) {
        ++first;
    }
    while (last > first && isWhiteSpaceOrNewline(units[last - 1])) {
        --last;
    }
    return TextEncoding::utf8FromUtf16(std::u16string_view(units).substr(first, last - first));
}

bool isFolderPath(const std::string& path)
{
    return FileSystem::isDirectory(path);
}

bool checkFolderPathAndCreateIfNecessary(const std::string& path)
{
    const std::string expanded = HomeDirectory::expandTilde(path);
    return FileSystem::isDirectory(expanded) || FileSystem::createDirectories(expanded);
}

} // namespace vexto
