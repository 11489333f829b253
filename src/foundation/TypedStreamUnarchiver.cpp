#include "foundation/TypedStreamUnarchiver.hpp"

#include "foundation/TextEncoding.hpp"
#include "foundation/TypedStreamFormat.hpp"

#include <cstring>
#include <string>
#include <vector>

namespace vexto {

namespace ts = typedstream;

namespace {

// One entry of the archive's object table, which numbers classes and objects together.
struct TableEntry {
    enum class Kind { Class, Object, Unfinished } kind = Kind::Unfinished;
    std::vector<std::string> classChain; // for classes: this class and its superclasses
    std::optional<ArchivedObject> object;
};

// A decoded object reference: nil, or an object.
using MaybeObject = std::optional<ArchivedObject>;

class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::optional<ArchivedObject> root()
    {
        if (!header() || !expectGroup("@")) {
            return std::nullopt;
        }
        MaybeObject object;
        if (!readObject(object) || !object) {
            return std::nullopt;
        }
        return object;
    }

private:
    // --- primitive values ---------------------------------------------------------------

    bool rawByte(std::uint8_t& value)
    {
        if (pos_ >= bytes_.size()) {
            return false;
        }
        value = bytes_[pos_++];
        return true;
    }

    bool fixed(int width, std::uint32_t& value)
    {
        if (bytes_.size() - pos_ < static_cast<std::size_t>(width)) {
            return false;
        }
        value = 0;
        for (int i = 0; i < width; ++i) {
            const std::uint32_t b = bytes_[pos_ + static_cast<std::size_t>(i)];
            value |= bigEndian_ ? b << (8 * (width - 1 - i)) : b << (8 * i);
        }
        pos_ += static_cast<std::size_t>(width);
        return true;
    }

    static bool isLiteral(std::uint8_t head) { return head < 0x80 || head >= 0x92; }

    // The integer that follows an already read head byte.
    bool integerAfter(std::uint8_t head, std::int64_t& value)
    {
        std::uint32_t raw = 0;
        if (head == ts::tagInt16) {
            if (!fixed(2, raw)) {
                return false;
            }
            value = static_cast<std::int16_t>(raw);
            return true;
        }
        if (head == ts::tagInt32) {
            if (!fixed(4, raw)) {
                return false;
            }
            value = static_cast<std::int32_t>(raw);
            return true;
        }
        if (!isLiteral(head)) {
            return false;
        }
        value = static_cast<std::int8_t>(head);
        return true;
    }

    bool integer(std::int64_t& value)
    {
        std::uint8_t head = 0;
        return rawByte(head) && integerAfter(head, value);
    }

    // Lengths are unsigned: a literal head byte counts from 0 to 255.
    bool length(std::size_t& value)
    {
        std::uint8_t head = 0;
        if (!rawByte(head)) {
            return false;
        }
        std::uint32_t raw = head;
        if (head == ts::tagInt16 || head == ts::tagInt32) {
            if (!fixed(head == ts::tagInt16 ? 2 : 4, raw)) {
                return false;
            }
        } else if (!isLiteral(head)) {
            return false;
        }
        value = raw;
        return value <= bytes_.size() - pos_;
    }

    bool real(float& value)
    {
        std::uint8_t head = 0;
        if (!rawByte(head)) {
            return false;
        }
        if (head == ts::tagReal) {
            std::uint32_t bits = 0;
            if (!fixed(4, bits)) {
                return false;
            }
            std::memcpy(&value, &bits, sizeof value);
            return true;
        }
        std::int64_t whole = 0;
        if (!integerAfter(head, whole)) {
            return false;
        }
        value = static_cast<float>(whole);
        return true;
    }

    bool text(std::string& value)
    {
        std::size_t count = 0;
        if (!length(count)) {
            return false;
        }
        value.assign(reinterpret_cast<const char*>(bytes_.data() + pos_), count);
        pos_ += count;
        return true;
    }

    // --- shared strings, classes and objects ------------------------------------------------

    bool reference(std::int64_t written, std::size_t tableSize, std::size_t& index) const
    {
        const std::int64_t n = written - ts::firstReference;
        if (n < 0 || static_cast<std::uint64_t>(n) >= tableSize) {
            return false;
        }
        index = static_cast<std::size_t>(n);
        return true;
    }

    bool sharedString(std::string& value)
    {
        std::uint8_t head = 0;
        if (!rawByte(head)) {
            return false;
        }
        if (head == ts::tagNew) {
            if (!text(value)) {
                return false;
            }
            shared_.push_back(value);
            return true;
        }
        std::int64_t written = 0;
        std::size_t index = 0;
        if (!integerAfter(head, written) || !reference(written, shared_.size(), index)) {
            return false;
        }
        value = shared_[index];
        return true;
    }

    bool expectGroup(std::string_view type)
    {
        std::string found;
        return sharedString(found) && found == type;
    }

    bool header()
    {
        std::uint8_t version = 0;
        std::string signature;
        std::int64_t system = 0;
        if (!rawByte(version) || version != ts::streamerVersion || !text(signature)) {
            return false;
        }
        if (signature == ts::bigEndianSignature) {
            bigEndian_ = true;
        } else if (signature != ts::littleEndianSignature) {
            return false;
        }
        return integer(system);
    }

    // Reads a class and its superclasses; `chain` lists their names, most derived first. A loop
    // rather than a recursion: each new superclass of a hostile stream would otherwise cost a
    // stack frame, and the chain's length is bounded as a whole.
    bool readClass(std::vector<std::string>& chain)
    {
        const auto limit = static_cast<std::size_t>(TypedStreamUnarchiver::maximumNesting);
        const std::size_t first = chain.size();
        std::vector<std::size_t> newEntries; // table entries of the classes met here first
        for (;;) {
            std::uint8_t head = 0;
            if (chain.size() > limit || !rawByte(head)) {
                return false;
            }
            if (head == ts::tagNil) {
                if (chain.size() == first) {
                    return false; // only a superclass may be nil
                }
                break;
            }
            if (head == ts::tagNew) {
                std::string name;
                std::int64_t version = 0;
                if (!sharedString(name) || !integer(version)) {
                    return false;
                }
                newEntries.push_back(table_.size());
                table_.push_back({TableEntry::Kind::Class, {}, std::nullopt});
                chain.push_back(std::move(name));
                continue;
            }
            std::int64_t written = 0;
            std::size_t index = 0;
            if (!integerAfter(head, written) || !reference(written, table_.size(), index) ||
                table_[index].kind != TableEntry::Kind::Class) {
                return false;
            }
            const std::vector<std::string>& known = table_[index].classChain;
            if (chain.size() + known.size() > limit + 1) {
                return false;
            }
            chain.insert(chain.end(), known.begin(), known.end());
            break;
        }
        // Each class read here inherits from the ones read after it.
        for (std::size_t i = 0; i < newEntries.size(); ++i) {
            table_[newEntries[i]].classChain.assign(
                chain.begin() + static_cast<std::ptrdiff_t>(first + i), chain.end());
        }
        return true;
    }

    bool readObject(MaybeObject& object)
    {
        if (++depth_ > TypedStreamUnarchiver::maximumNesting) {
            return false;
        }
        const bool read = readObjectBody(object);
        --depth_;
        return read;
    }

    bool readObjectBody(MaybeObject& object)
    {
        std::uint8_t head = 0;
        if (!rawByte(head)) {
            return false;
        }
        if (head == ts::tagNil) {
            object.reset();
            return true;
        }
        if (head != ts::tagNew) {
            std::int64_t written = 0;
            std::size_t index = 0;
            if (!integerAfter(head, written) || !reference(written, table_.size(), index) ||
                table_[index].kind != TableEntry::Kind::Object) {
                return false;
            }
            object = table_[index].object;
            return true;
        }
        const std::size_t entry = table_.size();
        table_.push_back({});
        std::vector<std::string> chain;
        if (!readClass(chain) || !readContents(chain, object) || !endOfObject()) {
            return false;
        }
        table_[entry].kind = TableEntry::Kind::Object;
        table_[entry].object = object;
        return true;
    }

    bool endOfObject()
    {
        std::uint8_t head = 0;
        return rawByte(head) && head == ts::tagEndOfObject;
    }

    static bool inherits(const std::vector<std::string>& chain, std::string_view name)
    {
        for (const std::string& className : chain) {
            if (className == name) {
                return true;
            }
        }
        return false;
    }

    bool readContents(const std::vector<std::string>& chain, MaybeObject& object)
    {
        if (inherits(chain, ts::colorClass.name)) {
            Color color;
            if (!readColor(color)) {
                return false;
            }
            object = color;
            return true;
        }
        if (inherits(chain, ts::stringClass.name)) {
            std::string value;
            if (!expectGroup("+") || !text(value) || !TextEncoding::isValidUtf8(value)) {
                return false;
            }
            object = value;
            return true;
        }
        return false;
    }

    bool readComponents(std::size_t count, float (&components)[5])
    {
        if (!expectGroup(std::string(count, 'f'))) {
            return false;
        }
        for (std::size_t i = 0; i < count; ++i) {
            if (!real(components[i])) {
                return false;
            }
        }
        return true;
    }

    bool readCatalogColor(Color& color)
    {
        MaybeObject catalogName;
        MaybeObject colorName;
        MaybeObject fallback;
        if (!expectGroup("@@@") || !readObject(catalogName) || !readObject(colorName) ||
            !readObject(fallback)) {
            return false;
        }
        const auto* catalog = catalogName ? std::get_if<std::string>(&*catalogName) : nullptr;
        const auto* name = colorName ? std::get_if<std::string>(&*colorName) : nullptr;
        const auto* fallbackColor = fallback ? std::get_if<Color>(&*fallback) : nullptr;
        if (catalog == nullptr || name == nullptr || (fallback && fallbackColor == nullptr)) {
            return false;
        }
        color = Color::catalog(*catalog, *name,
                               fallbackColor ? std::make_shared<Color>(*fallbackColor) : nullptr);
        return true;
    }

    bool readColor(Color& color)
    {
        std::uint8_t kind = 0;
        float c[5] = {};
        if (!expectGroup("c") || !rawByte(kind)) {
            return false;
        }
        switch (static_cast<ts::ColorKind>(kind)) {
        case ts::ColorKind::CalibratedRGB:
        case ts::ColorKind::DeviceRGB:
            if (!readComponents(4, c)) {
                return false;
            }
            color = kind == static_cast<std::uint8_t>(ts::ColorKind::CalibratedRGB)
                        ? Color::calibratedRGB(c[0], c[1], c[2], c[3])
                        : Color::deviceRGB(c[0], c[1], c[2], c[3]);
            return true;
        case ts::ColorKind::CalibratedWhite:
        case ts::ColorKind::DeviceWhite:
            if (!readComponents(2, c)) {
                return false;
            }
            color = kind == static_cast<std::uint8_t>(ts::ColorKind::CalibratedWhite)
                        ? Color::calibratedWhite(c[0], c[1])
                        : Color::deviceWhite(c[0], c[1]);
            return true;
        case ts::ColorKind::DeviceCMYK:
            if (!readComponents(5, c)) {
                return false;
            }
            color = Color::deviceCMYK(c[0], c[1], c[2], c[3], c[4]);
            return true;
        case ts::ColorKind::Catalog:
            return readCatalogColor(color);
        }
        return false;
    }

    std::span<const std::uint8_t> bytes_;
    std::size_t pos_ = 0;
    bool bigEndian_ = false;
    int depth_ = 0;
    std::vector<std::string> shared_;
    std::vector<TableEntry> table_;
};

} // namespace

std::optional<ArchivedObject>
TypedStreamUnarchiver::unarchiveObjectWithData(std::span<const std::uint8_t> data)
{
    return Reader(data).root();
}

} // namespace vexto
