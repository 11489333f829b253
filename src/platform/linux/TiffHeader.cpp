#include "platform/linux/TiffHeader.hpp"

#include "foundation/FileSystem.hpp"

#include <algorithm>

namespace vexto {

namespace {

constexpr std::size_t headerBytes = 8;
constexpr std::size_t entryBytes = 12;
constexpr std::uint16_t widthTag = 256;
constexpr std::uint16_t lengthTag = 257;
constexpr std::uint16_t shortType = 3;
constexpr std::uint16_t longType = 4;

class Reader {
public:
    Reader(std::span<const std::uint8_t> bytes, bool bigEndian)
        : bytes_(bytes), bigEndian_(bigEndian)
    {}

    bool has(std::size_t offset, std::size_t count) const
    {
        return offset <= bytes_.size() && count <= bytes_.size() - offset;
    }

    std::uint32_t number(std::size_t offset, std::size_t width) const
    {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < width; ++i) {
            const std::size_t index = bigEndian_ ? offset + i : offset + width - 1 - i;
            value = (value << 8) | bytes_[index];
        }
        return value;
    }

private:
    std::span<const std::uint8_t> bytes_;
    bool bigEndian_;
};

std::optional<bool> byteOrderIsBig(std::span<const std::uint8_t> bytes)
{
    if (bytes.size() < headerBytes) {
        return std::nullopt;
    }
    if (bytes[0] == 'I' && bytes[1] == 'I' && bytes[2] == 42 && bytes[3] == 0) {
        return false;
    }
    if (bytes[0] == 'M' && bytes[1] == 'M' && bytes[2] == 0 && bytes[3] == 42) {
        return true;
    }
    return std::nullopt;
}

// A SHORT or LONG count of one, whose value lies in the entry itself.
std::optional<std::uint32_t> entryValue(const Reader& reader, std::size_t entry)
{
    const std::uint32_t type = reader.number(entry + 2, 2);
    if (reader.number(entry + 4, 4) != 1 || (type != shortType && type != longType)) {
        return std::nullopt;
    }
    return reader.number(entry + 8, type == shortType ? 2 : 4);
}

// Width and length from the directory that starts at `directory`.
std::optional<Size> sizeFromDirectory(const Reader& reader, std::size_t directory)
{
    if (!reader.has(directory, 2)) {
        return std::nullopt;
    }
    const std::size_t count =
        std::min<std::size_t>(reader.number(directory, 2), TiffHeader::entriesRead);
    std::optional<std::uint32_t> width;
    std::optional<std::uint32_t> length;
    for (std::size_t index = 0; index < count; ++index) {
        const std::size_t entry = directory + 2 + index * entryBytes;
        if (!reader.has(entry, entryBytes)) {
            return std::nullopt;
        }
        const std::uint32_t tag = reader.number(entry, 2);
        if (tag == widthTag) {
            width = entryValue(reader, entry);
        } else if (tag == lengthTag) {
            length = entryValue(reader, entry);
        }
    }
    const auto usable = [](const std::optional<std::uint32_t>& side) {
        return side && *side > 0 && *side <= TiffHeader::maximumSide;
    };
    if (!usable(width) || !usable(length)) {
        return std::nullopt;
    }
    return Size{static_cast<double>(*width), static_cast<double>(*length)};
}

} // namespace

std::optional<Size> TiffHeader::firstPictureSize(std::span<const std::uint8_t> bytes)
{
    const auto bigEndian = byteOrderIsBig(bytes);
    if (!bigEndian || bytes.size() > maximumFileBytes) {
        return std::nullopt;
    }
    const Reader reader(bytes, *bigEndian);
    return sizeFromDirectory(reader, reader.number(4, 4));
}

std::optional<Size> TiffHeader::firstPictureSize(const std::string& path)
{
    // The pane's images are small: reading one whole costs less than loading libtiff would.
    const auto bytes = FileSystem::readFile(path, maximumFileBytes);
    return bytes ? firstPictureSize(*bytes) : std::nullopt;
}

} // namespace vexto
