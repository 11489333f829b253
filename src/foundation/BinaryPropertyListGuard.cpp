#include "foundation/BinaryPropertyListGuard.hpp"

#include "foundation/PlistValue.hpp"

#include <algorithm>
#include <bit>
#include <vector>

namespace vexto {

namespace {

constexpr const char* malformed = "malformed binary property list or nested too deeply";

enum class Marker : unsigned {
    Date = 0x3,
    Data = 0x4,
    AsciiString = 0x5,
    Utf16String = 0x6,
    Array = 0xA,
    Set = 0xC,
    Dictionary = 0xD,
};

class Walker {
public:
    Walker(std::span<const std::uint8_t> bytes, const BinaryPropertyListGuard::Limits& limits)
        : bytes_(bytes), limits_(limits)
    {}

    std::optional<std::string> run()
    {
        if (!readTrailer() || !walkFrom(static_cast<std::size_t>(topObject_))) {
            return reason_.empty() ? std::string(malformed) : reason_;
        }
        return std::nullopt;
    }

private:
    static constexpr std::size_t trailerSize = 32;
    static constexpr std::size_t headerSize = 8;
    enum class Visit : std::uint8_t { NotSeen, InProgress, Done };

    bool refuse(std::string reason)
    {
        reason_ = std::move(reason);
        return false;
    }

    bool readBigEndian(std::size_t offset, std::size_t width, std::uint64_t& value) const
    {
        if (width == 0 || width > 8 || offset > bytes_.size() || bytes_.size() - offset < width) {
            return false;
        }
        value = 0;
        for (std::size_t i = 0; i < width; ++i) {
            value = (value << 8) | bytes_[offset + i];
        }
        return true;
    }

    bool readTrailer()
    {
        if (bytes_.size() < headerSize + trailerSize) {
            return false;
        }
        const std::size_t trailer = bytes_.size() - trailerSize;
        offsetSize_ = bytes_[trailer + 6];
        referenceSize_ = bytes_[trailer + 7];
        std::uint64_t tableOffset = 0;
        if (!readBigEndian(trailer + 8, 8, objectCount_) ||
            !readBigEndian(trailer + 16, 8, topObject_) ||
            !readBigEndian(trailer + 24, 8, tableOffset)) {
            return false;
        }
        if (offsetSize_ == 0 || offsetSize_ > 8 || referenceSize_ == 0 || referenceSize_ > 8 ||
            objectCount_ == 0 || topObject_ >= objectCount_ || tableOffset < headerSize ||
            tableOffset > trailer || (trailer - tableOffset) / offsetSize_ < objectCount_) {
            return false;
        }
        tableOffset_ = static_cast<std::size_t>(tableOffset);
        const auto count = static_cast<std::size_t>(objectCount_);
        visits_.assign(count, Visit::NotSeen);
        depths_.assign(count, 0);
        expanded_.assign(count, 0);
        return true;
    }

    // Where the object starts; none when its offset points outside the object area.
    std::optional<std::size_t> objectStart(std::size_t object) const
    {
        std::uint64_t offset = 0;
        if (!readBigEndian(tableOffset_ + object * offsetSize_, offsetSize_, offset) ||
            offset < headerSize || offset >= tableOffset_) {
            return std::nullopt;
        }
        return static_cast<std::size_t>(offset);
    }

    // The object's count field, with `pos` moved past it.
    bool count(std::size_t& pos, std::uint64_t& value) const
    {
        value = bytes_[pos++] & 0x0F;
        if (value != 0x0F) {
            return true;
        }
        if (pos >= tableOffset_ || (bytes_[pos] >> 4) != 0x1) {
            return false;
        }
        const std::size_t width = std::size_t{1} << (bytes_[pos] & 0x0F);
        if (!readBigEndian(pos + 1, width, value)) {
            return false;
        }
        pos += 1 + width;
        return true;
    }

    // Room left between `pos` and the offset table for `items` items of `size` bytes.
    bool fits(std::size_t pos, std::uint64_t items, std::size_t size) const
    {
        return pos <= tableOffset_ && items <= (tableOffset_ - pos) / size;
    }

    bool asciiText(std::size_t pos, std::uint64_t length)
    {
        if (!fits(pos, length, 1)) {
            return false;
        }
        const auto first = bytes_.begin() + static_cast<std::ptrdiff_t>(pos);
        const auto last = first + static_cast<std::ptrdiff_t>(length);
        if (std::find(first, last, 0) != last) {
            return refuse("text holds a NUL character");
        }
        if (std::any_of(first, last, [](std::uint8_t byte) { return byte >= 0x80; })) {
            return refuse("text is not valid ASCII");
        }
        return true;
    }

    bool utf16Text(std::size_t pos, std::uint64_t units)
    {
        if (!fits(pos, units, 2)) {
            return false;
        }
        bool expectLowSurrogate = false;
        for (std::uint64_t i = 0; i < units; ++i) {
            const unsigned unit = (unsigned(bytes_[pos + 2 * i]) << 8) | bytes_[pos + 2 * i + 1];
            const bool high = unit >= 0xD800 && unit <= 0xDBFF;
            const bool low = unit >= 0xDC00 && unit <= 0xDFFF;
            if (unit == 0) {
                return refuse("text holds a NUL character");
            }
            if (low != expectLowSurrogate || (high && expectLowSurrogate)) {
                return refuse("text is not valid UTF-16");
            }
            expectLowSurrogate = high;
        }
        return !expectLowSurrogate || refuse("text is not valid UTF-16");
    }

    // libplist keeps dates in 32 bits of seconds; beyond that its conversion is undefined.
    bool date(std::size_t pos)
    {
        std::uint64_t bits = 0;
        if (pos + 8 > tableOffset_ || !readBigEndian(pos, 8, bits)) {
            return false;
        }
        const double seconds = std::bit_cast<double>(bits);
        if (!(seconds >= PlistDate::earliestSeconds && seconds <= PlistDate::latestSeconds)) {
            return refuse("date out of range");
        }
        return true;
    }

    bool isText(std::size_t object) const
    {
        const auto start = objectStart(object);
        const unsigned kind = start ? bytes_[*start] >> 4 : 0;
        return kind == unsigned(Marker::AsciiString) || kind == unsigned(Marker::Utf16String);
    }

    // The references a container holds; leaves have none but their lengths and text are checked.
    bool inspect(std::size_t object, std::vector<std::size_t>& children)
    {
        children.clear();
        const auto start = objectStart(object);
        if (!start) {
            return false;
        }
        std::size_t pos = *start;
        const auto kind = static_cast<Marker>(bytes_[pos] >> 4);
        std::uint64_t length = 0;
        switch (kind) {
        case Marker::Date:
            return date(pos + 1);
        case Marker::Data:
            return count(pos, length) && fits(pos, length, 1);
        case Marker::AsciiString:
            return count(pos, length) && asciiText(pos, length);
        case Marker::Utf16String:
            return count(pos, length) && utf16Text(pos, length);
        case Marker::Array:
        case Marker::Set:
        case Marker::Dictionary:
            break;
        default:
            return true;
        }
        if (!count(pos, length)) {
            return false;
        }
        const std::uint64_t references = kind == Marker::Dictionary ? length * 2 : length;
        if (!fits(pos, references, referenceSize_)) {
            return false;
        }
        children.reserve(static_cast<std::size_t>(references));
        for (std::uint64_t i = 0; i < references; ++i) {
            std::uint64_t child = 0;
            readBigEndian(pos + i * referenceSize_, referenceSize_, child);
            if (child >= objectCount_) {
                return false;
            }
            children.push_back(static_cast<std::size_t>(child));
        }
        // A dictionary's keys come first and must be text.
        if (kind == Marker::Dictionary &&
            !std::all_of(children.begin(), children.begin() + static_cast<std::ptrdiff_t>(length),
                         [this](std::size_t key) { return isText(key); })) {
            return false;
        }
        return true;
    }

    // Depth-first with an explicit stack. Each object is inspected once; its depth and its size
    // once every reference is followed are remembered, so shared objects cost nothing twice.
    bool walkFrom(std::size_t root)
    {
        struct Frame {
            std::size_t object;
            std::vector<std::size_t> children;
            std::size_t next = 0;
            int deepest = 0;
            std::uint64_t expanded = 1;
        };
        const std::uint64_t ceiling = limits_.maximumValues + 1;
        std::vector<Frame> stack;
        const auto enter = [&](std::size_t object) {
            Frame frame{object, {}, 0, 0, 1};
            if (!inspect(object, frame.children)) {
                return false;
            }
            visits_[object] = Visit::InProgress;
            stack.push_back(std::move(frame));
            return static_cast<int>(stack.size()) <= limits_.maximumNesting;
        };
        const auto tooMany = [&] {
            return refuse("holds more than " + std::to_string(limits_.maximumValues) + " values");
        };
        if (!enter(root)) {
            return false;
        }
        while (!stack.empty()) {
            Frame& frame = stack.back();
            if (frame.next == frame.children.size()) {
                const int depth = frame.deepest + 1;
                const std::uint64_t expanded = frame.expanded;
                depths_[frame.object] = depth;
                expanded_[frame.object] = expanded;
                visits_[frame.object] = Visit::Done;
                stack.pop_back();
                if (!stack.empty()) {
                    Frame& parent = stack.back();
                    parent.deepest = std::max(parent.deepest, depth);
                    parent.expanded = std::min(ceiling, parent.expanded + expanded);
                    if (parent.expanded >= ceiling) {
                        return tooMany();
                    }
                } else if (expanded >= ceiling) {
                    return tooMany();
                }
                continue;
            }
            const std::size_t child = frame.children[frame.next++];
            if (visits_[child] == Visit::InProgress) {
                return false;
            }
            if (visits_[child] == Visit::Done) {
                frame.deepest = std::max(frame.deepest, depths_[child]);
                frame.expanded = std::min(ceiling, frame.expanded + expanded_[child]);
                if (frame.expanded >= ceiling) {
                    return tooMany();
                }
                if (static_cast<int>(stack.size()) + depths_[child] > limits_.maximumNesting) {
                    return false;
                }
                continue;
            }
            if (!enter(child)) {
                return false;
            }
        }
        return true;
    }

    std::span<const std::uint8_t> bytes_;
    const BinaryPropertyListGuard::Limits& limits_;
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::uint64_t objectCount_ = 0;
    std::uint64_t topObject_ = 0;
    std::size_t tableOffset_ = 0;
    std::vector<Visit> visits_;
    std::vector<int> depths_;
    std::vector<std::uint64_t> expanded_;
    std::string reason_;
};

} // namespace

std::optional<std::string> BinaryPropertyListGuard::check(std::span<const std::uint8_t> bytes,
                                                          const Limits& limits)
{
    return Walker(bytes, limits).run();
}

} // namespace vexto
