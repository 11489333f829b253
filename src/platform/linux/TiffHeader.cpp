#include "platform/linux/TiffHeader.hpp"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

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

bool readAt(int fd, std::span<std::uint8_t> into, off_t offset)
{
    return ::pread(fd, into.data(), into.size(), offset) == static_cast<ssize_t>(into.size());
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
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return std::nullopt;
    }
    // The header, then the directory where the header says it is: two small reads, whatever
    // the size of the pictures between them.
    std::optional<Size> size;
    struct stat status {};
    std::array<std::uint8_t, headerBytes> header{};
    if (::fstat(fd, &status) == 0 && status.st_size <= static_cast<off_t>(maximumFileBytes) &&
        readAt(fd, header, 0)) {
        const auto bigEndian = byteOrderIsBig(header);
        const std::size_t directory = Reader(header, bigEndian.value_or(false)).number(4, 4);
        const auto fileSize = static_cast<std::size_t>(status.st_size);
        if (bigEndian && directory >= headerBytes && directory < fileSize) {
            std::vector<std::uint8_t> entries(
                std::min(2 + entriesRead * entryBytes, fileSize - directory));
            if (readAt(fd, entries, static_cast<off_t>(directory))) {
                size = sizeFromDirectory(Reader(entries, *bigEndian), 0);
            }
        }
    }
    ::close(fd);
    return size;
}

} // namespace vexto
