#include "foundation/TypedStreamArchiver.hpp"

#include "foundation/TypedStreamFormat.hpp"

#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <string>

namespace vexto {

namespace ts = typedstream;

namespace {

class Writer {
public:
    std::vector<std::uint8_t> archive(const ArchivedObject& root)
    {
        writeHeader();
        sharedString("@");
        std::visit([this](const auto& object) { write(object); }, root);
        return std::move(out_);
    }

private:
    void byte(std::uint8_t value) { out_.push_back(value); }

    void littleEndian(std::uint32_t value, int width)
    {
        for (int i = 0; i < width; ++i) {
            byte(static_cast<std::uint8_t>(value >> (8 * i)));
        }
    }

    void integer(std::int64_t value)
    {
        if (value >= ts::smallestLiteral && value <= ts::largestLiteral) {
            byte(static_cast<std::uint8_t>(static_cast<std::int8_t>(value)));
        } else if (value >= std::numeric_limits<std::int16_t>::min() &&
                   value <= std::numeric_limits<std::int16_t>::max()) {
            byte(ts::tagInt16);
            littleEndian(static_cast<std::uint16_t>(value), 2);
        } else {
            byte(ts::tagInt32);
            littleEndian(static_cast<std::uint32_t>(value), 4);
        }
    }

    void reference(std::int64_t index) { integer(index + ts::firstReference); }

    // Integral values take the compact integer form, as the platform's archiver writes them.
    void real(float value)
    {
        const bool integral = std::isfinite(value) && value == std::trunc(value) &&
                              value >= -2147483648.0f && value < 2147483648.0f;
        if (integral) {
            integer(static_cast<std::int64_t>(value));
            return;
        }
        byte(ts::tagReal);
        std::uint32_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        littleEndian(bits, 4);
    }

    void bytes(std::string_view text)
    {
        integer(static_cast<std::int64_t>(text.size()));
        out_.insert(out_.end(), text.begin(), text.end());
    }

    void sharedString(const std::string& text)
    {
        if (auto found = sharedStrings_.find(text); found != sharedStrings_.end()) {
            reference(found->second);
            return;
        }
        const auto index = static_cast<std::int64_t>(sharedStrings_.size());
        sharedStrings_.emplace(text, index);
        byte(ts::tagNew);
        bytes(text);
    }

    void writeHeader()
    {
        byte(ts::streamerVersion);
        bytes(ts::littleEndianSignature);
        integer(ts::systemVersion);
    }

    void writeClass(const ts::ArchivedClass& archivedClass)
    {
        const std::string name(archivedClass.name);
        if (auto found = classes_.find(name); found != classes_.end()) {
            reference(found->second);
            return;
        }
        byte(ts::tagNew);
        sharedString(name);
        integer(archivedClass.version);
        classes_.emplace(name, nextObject_++);
        if (archivedClass.name == ts::rootClass.name) {
            byte(ts::tagNil);
        } else {
            writeClass(ts::rootClass);
        }
    }

    void beginObject(const ts::ArchivedClass& archivedClass)
    {
        byte(ts::tagNew);
        ++nextObject_;
        writeClass(archivedClass);
    }

    void write(const std::string& text)
    {
        beginObject(ts::stringClass);
        sharedString("+");
        bytes(text);
        byte(ts::tagEndOfObject);
    }

    void write(const Color& color)
    {
        beginObject(ts::colorClass);
        sharedString("c");
        byte(static_cast<std::uint8_t>(kindOf(color.space())));
        if (color.space() == Color::Space::Catalog) {
            sharedString("@@@");
            write(color.catalogName());
            write(color.colorName());
            if (color.fallback() != nullptr) {
                write(*color.fallback());
            } else {
                byte(ts::tagNil);
            }
        } else {
            sharedString(std::string(static_cast<std::size_t>(color.componentCount()), 'f'));
            for (int i = 0; i < color.componentCount(); ++i) {
                real(color.component(i));
            }
        }
        byte(ts::tagEndOfObject);
    }

    static ts::ColorKind kindOf(Color::Space space)
    {
        switch (space) {
        case Color::Space::CalibratedRGB:
            return ts::ColorKind::CalibratedRGB;
        case Color::Space::DeviceRGB:
            return ts::ColorKind::DeviceRGB;
        case Color::Space::CalibratedWhite:
            return ts::ColorKind::CalibratedWhite;
        case Color::Space::DeviceWhite:
            return ts::ColorKind::DeviceWhite;
        case Color::Space::DeviceCMYK:
            return ts::ColorKind::DeviceCMYK;
        case Color::Space::Catalog:
            return ts::ColorKind::Catalog;
        }
        return ts::ColorKind::CalibratedWhite;
    }

    std::vector<std::uint8_t> out_;
    std::map<std::string, std::int64_t> sharedStrings_;
    std::map<std::string, std::int64_t> classes_;
    std::int64_t nextObject_ = 0;
};

} // namespace

std::vector<std::uint8_t>
TypedStreamArchiver::archivedDataWithRootObject(const ArchivedObject& root)
{
    return Writer().archive(root);
}

} // namespace vexto
