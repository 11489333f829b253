#include "PlistPrinter.hpp"

#include "foundation/NumericText.hpp"
#include "foundation/QuotedText.hpp"
#include "foundation/TypedStreamUnarchiver.hpp"

#include <cmath>
#include <ctime>

namespace vexto {

namespace {

constexpr std::size_t shownDataBytes = 64;

std::string dateText(const PlistDate& date)
{
    const auto seconds = static_cast<std::time_t>(
        std::floor(date.secondsSinceReferenceDate + PlistDate::unixTimeOfReferenceDate));
    std::tm parts{};
    ::gmtime_r(&seconds, &parts);
    char buffer[64];
    std::strftime(buffer, sizeof buffer, "%Y-%m-%dT%H:%M:%SZ", &parts);
    return std::string("<date ") + buffer + ">";
}

std::string dataText(const PlistData& data)
{
    if (const auto object = TypedStreamUnarchiver::unarchiveObjectWithData(data)) {
        if (const auto* color = std::get_if<Color>(&*object)) {
            return color->description();
        }
        return "<archived string " + QuotedText::quoted(std::get<std::string>(*object)) + ">";
    }
    static constexpr char digits[] = "0123456789abcdef";
    std::string out = "<data " + std::to_string(data.size()) + " bytes";
    if (!data.empty()) {
        out += ": ";
    }
    for (std::size_t i = 0; i < data.size() && i < shownDataBytes; ++i) {
        out += digits[data[i] >> 4];
        out += digits[data[i] & 0x0F];
    }
    return out + (data.size() > shownDataBytes ? "...>" : ">");
}

void printValue(const PlistValue& value, int indent, std::string& out);

void printArray(const PlistArray& array, int indent, std::string& out)
{
    if (array.empty()) {
        out += "[]";
        return;
    }
    out += "[\n";
    for (const PlistValue& item : array) {
        out.append(static_cast<std::size_t>(indent + 1) * 2, ' ');
        printValue(item, indent + 1, out);
        out += '\n';
    }
    out.append(static_cast<std::size_t>(indent) * 2, ' ');
    out += ']';
}

void printDictionary(const PlistDictionary& dictionary, int indent, std::string& out)
{
    if (dictionary.empty()) {
        out += "{}";
        return;
    }
    out += "{\n";
    for (const auto& [key, item] : dictionary) {
        out.append(static_cast<std::size_t>(indent + 1) * 2, ' ');
        out += QuotedText::quoted(key) + " = ";
        printValue(item, indent + 1, out);
        out += '\n';
    }
    out.append(static_cast<std::size_t>(indent) * 2, ' ');
    out += '}';
}

void printValue(const PlistValue& value, int indent, std::string& out)
{
    switch (value.type()) {
    case PlistValue::Type::Boolean:
        out += *value.asBoolean() ? "true" : "false";
        break;
    case PlistValue::Type::Integer:
        out += std::to_string(*value.asInteger());
        break;
    case PlistValue::Type::Real:
        out += NumericText::shortestText(*value.asReal());
        break;
    case PlistValue::Type::String:
        out += QuotedText::quoted(*value.asString());
        break;
    case PlistValue::Type::Data:
        out += dataText(*value.asData());
        break;
    case PlistValue::Type::Date:
        out += dateText(*value.asDate());
        break;
    case PlistValue::Type::Array:
        printArray(*value.asArray(), indent, out);
        break;
    case PlistValue::Type::Dictionary:
        printDictionary(*value.asDictionary(), indent, out);
        break;
    }
}

} // namespace

std::string PlistPrinter::print(const PlistValue& value)
{
    std::string out;
    printValue(value, 0, out);
    return out + '\n';
}

} // namespace vexto
