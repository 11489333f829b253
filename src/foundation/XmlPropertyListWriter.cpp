#include "foundation/XmlPropertyListWriter.hpp"

#include "foundation/Base64.hpp"
#include "foundation/DictionaryKeyOrder.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <ctime>
#include <span>
#include <type_traits>

namespace vexto {

namespace {

constexpr std::string_view prolog = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                                    "<plist version=\"1.0\">\n";
constexpr std::string_view epilog = "</plist>\n";

class Writer {
public:
    explicit Writer(int maximumNesting) : maximumNesting_(maximumNesting) {}

    template <typename Root> std::optional<std::string> run(const Root& root)
    {
        out_.reserve(4096);
        out_ += prolog;
        bool written = false;
        if constexpr (std::is_same_v<Root, PlistDictionary>) {
            written = dictionary(root, 0, 1);
        } else {
            written = write(root, 0, 0);
        }
        if (!written) {
            return std::nullopt;
        }
        out_ += epilog;
        return std::move(out_);
    }

private:
    void indent(std::size_t depth) { out_.append(depth, '\t'); }

    void escaped(std::string_view text)
    {
        // Runs without a character to escape go in whole. (find_first_of would look each
        // character up in the set with a call of its own.)
        const auto isSpecial = [](char c) {
            return c == '<' || c == '>' || c == '&';
        };
        for (auto special = std::find_if(text.begin(), text.end(), isSpecial);
             special != text.end(); special = std::find_if(text.begin(), text.end(), isSpecial)) {
            out_.append(text.begin(), special);
            out_ += *special == '<' ? "&lt;" : *special == '>' ? "&gt;" : "&amp;";
            text.remove_prefix(static_cast<std::size_t>(special - text.begin()) + 1);
        }
        out_.append(text);
    }

    void element(std::string_view tag, std::string_view text)
    {
        out_ += '<';
        out_ += tag;
        out_ += '>';
        out_ += text;
        out_ += "</";
        out_ += tag;
        out_ += ">\n";
    }

    void real(double value)
    {
        if (std::isnan(value)) {
            element("real", "nan");
        } else if (std::isinf(value)) {
            element("real", value > 0 ? "+infinity" : "-infinity");
        } else if (value == 0.0) {
            element("real", "0.0");
        } else {
            char text[64];
            const auto end =
                std::to_chars(text, text + sizeof text, value, std::chars_format::general, 17).ptr;
            element("real", std::string_view(text, static_cast<std::size_t>(end - text)));
        }
    }

    void date(const PlistDate& date)
    {
        const auto seconds = static_cast<std::time_t>(std::trunc(date.secondsSinceReferenceDate) +
                                                      PlistDate::unixTimeOfReferenceDate);
        std::tm utc{};
        char text[32] = "";
        if (::gmtime_r(&seconds, &utc) != nullptr) {
            std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc);
        }
        element("date", text);
    }

    void data(const PlistData& bytes, std::size_t depth)
    {
        out_ += "<data>\n";
        const std::size_t lineIndent = std::min<std::size_t>(depth, 8);
        const std::size_t bytesPerLine = (76 - lineIndent * 8) / 4 * 3;
        for (std::size_t at = 0; at < bytes.size(); at += bytesPerLine) {
            indent(lineIndent);
            out_ += Base64::encode(
                std::span(bytes).subspan(at, std::min(bytesPerLine, bytes.size() - at)));
            out_ += '\n';
        }
        indent(depth);
        out_ += "</data>\n";
    }

    bool write(const PlistValue& value, std::size_t depth, int nesting)
    {
        indent(depth);
        switch (value.type()) {
        case PlistValue::Type::Boolean:
            out_ += *value.asBoolean() ? "<true/>\n" : "<false/>\n";
            return true;
        case PlistValue::Type::Integer: {
            char digits[24];
            const auto end = std::to_chars(digits, digits + sizeof digits, *value.asInteger()).ptr;
            element("integer", std::string_view(digits, static_cast<std::size_t>(end - digits)));
            return true;
        }
        case PlistValue::Type::Real:
            real(*value.asReal());
            return true;
        case PlistValue::Type::String:
            out_ += "<string>";
            escaped(*value.asString());
            out_ += "</string>\n";
            return true;
        case PlistValue::Type::Data:
            data(*value.asData(), depth);
            return true;
        case PlistValue::Type::Date:
            date(*value.asDate());
            return true;
        case PlistValue::Type::Array:
            return array(*value.asArray(), depth, nesting + 1);
        case PlistValue::Type::Dictionary:
            return dictionary(*value.asDictionary(), depth, nesting + 1);
        }
        return false;
    }

    bool array(const PlistArray& items, std::size_t depth, int nesting)
    {
        if (nesting > maximumNesting_) {
            return false;
        }
        if (items.empty()) {
            out_ += "<array/>\n";
            return true;
        }
        out_ += "<array>\n";
        for (const PlistValue& item : items) {
            if (!write(item, depth + 1, nesting)) {
                return false;
            }
        }
        indent(depth);
        out_ += "</array>\n";
        return true;
    }

    bool dictionary(const PlistDictionary& entries, std::size_t depth, int nesting)
    {
        if (nesting > maximumNesting_) {
            return false;
        }
        if (entries.empty()) {
            out_ += "<dict/>\n";
            return true;
        }
        out_ += "<dict>\n";
        for (const auto* entry : DictionaryKeyOrder::entries(entries)) {
            indent(depth + 1);
            out_ += "<key>";
            escaped(entry->first);
            out_ += "</key>\n";
            if (!write(entry->second, depth + 1, nesting)) {
                return false;
            }
        }
        indent(depth);
        out_ += "</dict>\n";
        return true;
    }

    int maximumNesting_;
    std::string out_;
};

} // namespace

std::optional<std::string> XmlPropertyListWriter::write(const PlistValue& value, int maximumNesting)
{
    return Writer(maximumNesting).run(value);
}

std::optional<std::string> XmlPropertyListWriter::write(const PlistDictionary& root,
                                                        int maximumNesting)
{
    return Writer(maximumNesting).run(root);
}

} // namespace vexto
