#include "foundation/PropertyListCodec.hpp"

#include "foundation/BinaryPropertyListGuard.hpp"
#include "foundation/DictionaryKeyOrder.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/TextEncoding.hpp"
#include "foundation/XmlPropertyListReader.hpp"
#include "foundation/XmlPropertyListWriter.hpp"

#include <plist/plist.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

namespace vexto {

namespace {

struct NodeDeleter {
    void operator()(plist_t node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, NodeDeleter>;

constexpr std::string_view binaryMagic = "bplist00";

// libplist counts dates from the same 2001 reference date as the format, in whole seconds plus
// microseconds.
PlistDate dateFromNode(plist_t node)
{
    int32_t seconds = 0;
    int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    (void)microseconds; // dates are kept to the second, as the XML format writes them
    return PlistDate{static_cast<double>(seconds)};
}

plist_t nodeFromDate(const PlistDate& date)
{
    double whole = std::floor(date.secondsSinceReferenceDate);
    double micro = std::round((date.secondsSinceReferenceDate - whole) * 1e6);
    if (micro >= 1e6) {
        whole += 1;
        micro -= 1e6;
    }
    whole = std::clamp(whole, -2147483648.0, 2147483647.0);
    return plist_new_date(static_cast<int32_t>(whole), static_cast<int32_t>(micro));
}

PlistValue valueFromNode(plist_t node);

PlistValue arrayFromNode(plist_t node)
{
    PlistArray array;
    const uint32_t count = plist_array_get_size(node);
    array.reserve(count);
    for (uint32_t i = 0; i < count; ++i) {
        array.push_back(valueFromNode(plist_array_get_item(node, i)));
    }
    return array;
}

PlistValue dictionaryFromNode(plist_t node)
{
    PlistDictionary dictionary;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    for (;;) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator, &key, &item);
        if (key == nullptr) {
            break;
        }
        dictionary.insert_or_assign(std::string(key), valueFromNode(item));
        std::free(key);
    }
    std::free(iterator);
    return dictionary;
}

// The guard has already refused text with NUL characters; reading through the pointer and length
// keeps libplist's own assertions out of the way all the same.
PlistValue stringFromNode(plist_t node)
{
    uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return text != nullptr ? std::string(text, static_cast<std::size_t>(length)) : std::string();
}

PlistValue valueFromNode(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        uint8_t flag = 0;
        plist_get_bool_val(node, &flag);
        return flag != 0;
    }
    case PLIST_UINT: {
        uint64_t raw = 0;
        plist_get_uint_val(node, &raw);
        return static_cast<long long>(raw);
    }
    case PLIST_REAL: {
        double real = 0.0;
        plist_get_real_val(node, &real);
        return real;
    }
    case PLIST_STRING:
        return stringFromNode(node);
    case PLIST_DATA: {
        uint64_t length = 0;
        const auto* bytes =
            reinterpret_cast<const std::uint8_t*>(plist_get_data_ptr(node, &length));
        return bytes != nullptr ? PlistData(bytes, bytes + length) : PlistData();
    }
    case PLIST_DATE:
        return dateFromNode(node);
    case PLIST_ARRAY:
        return arrayFromNode(node);
    case PLIST_DICT:
        return dictionaryFromNode(node);
    case PLIST_UID: {
        // Keyed-archive references read as the platform shows them in XML.
        uint64_t uid = 0;
        plist_get_uid_val(node, &uid);
        return PlistDictionary{{"CF$UID", PlistValue(static_cast<long long>(uid))}};
    }
    default:
        return PlistDictionary{};
    }
}

plist_t nodeFromValue(const PlistValue& value)
{
    switch (value.type()) {
    case PlistValue::Type::Boolean:
        return plist_new_bool(*value.asBoolean() ? 1 : 0);
    case PlistValue::Type::Integer:
        return plist_new_uint(static_cast<uint64_t>(*value.asInteger()));
    case PlistValue::Type::Real:
        return plist_new_real(*value.asReal());
    case PlistValue::Type::String:
        return plist_new_string(value.asString()->c_str());
    case PlistValue::Type::Data: {
        const PlistData& data = *value.asData();
        return plist_new_data(reinterpret_cast<const char*>(data.data()), data.size());
    }
    case PlistValue::Type::Date:
        return nodeFromDate(*value.asDate());
    case PlistValue::Type::Array: {
        plist_t array = plist_new_array();
        for (const PlistValue& item : *value.asArray()) {
            plist_array_append_item(array, nodeFromValue(item));
        }
        return array;
    }
    case PlistValue::Type::Dictionary: {
        plist_t node = plist_new_dict();
        for (const auto* entry : DictionaryKeyOrder::entries(*value.asDictionary())) {
            plist_dict_set_item(node, entry->first.c_str(), nodeFromValue(entry->second));
        }
        return node;
    }
    }
    return plist_new_dict();
}

bool nestsWithin(const PlistValue& value, int remaining)
{
    if (remaining <= 0) {
        return false;
    }
    if (const auto* array = value.asArray()) {
        return std::all_of(array->begin(), array->end(), [&](const PlistValue& item) {
            return nestsWithin(item, remaining - 1);
        });
    }
    if (const auto* dictionary = value.asDictionary()) {
        return std::all_of(dictionary->begin(), dictionary->end(), [&](const auto& entry) {
            return nestsWithin(entry.second, remaining - 1);
        });
    }
    return true;
}

Node nodeForWriting(const PlistValue& value)
{
    if (!nestsWithin(value, PropertyListCodec::maximumNesting)) {
        return nullptr;
    }
    return Node(nodeFromValue(value));
}

PropertyListCodec::ReadResult failure(PropertyListCodec::Format format, std::string reason)
{
    return PropertyListCodec::ReadResult{std::nullopt, format, std::move(reason)};
}

} // namespace

PropertyListCodec::ReadResult PropertyListCodec::read(std::span<const std::uint8_t> bytes)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const Format format = text.starts_with(binaryMagic) ? Format::Binary : Format::Xml;
    if (bytes.empty()) {
        return failure(format, "empty file");
    }
    if (bytes.size() > maximumInputBytes) {
        return failure(format, "larger than 16 MiB");
    }
    if (format == Format::Xml) {
        auto xml = XmlPropertyListReader::read(text, {maximumNesting, maximumValues});
        return ReadResult{std::move(xml.value), format, std::move(xml.error)};
    }
    if (auto refusal = BinaryPropertyListGuard::check(bytes, {maximumNesting, maximumValues})) {
        return failure(format, std::move(*refusal));
    }
    plist_t raw = nullptr;
    plist_from_bin(text.data(), static_cast<uint32_t>(bytes.size()), &raw);
    Node root(raw);
    if (!root) {
        return failure(format, "malformed binary property list or nested too deeply");
    }
    return ReadResult{valueFromNode(root.get()), format, {}};
}

PropertyListCodec::ReadResult PropertyListCodec::readFile(const std::string& path)
{
    std::string reason;
    auto bytes = FileSystem::readFile(path, maximumInputBytes, &reason);
    if (!bytes) {
        return failure(Format::Xml, reason == FileSystem::tooLarge
                                        ? std::string("larger than 16 MiB")
                                        : "cannot be read (" + reason + ")");
    }
    return read(*bytes);
}

std::optional<std::string> PropertyListCodec::xmlFrom(const PlistValue& value)
{
    return XmlPropertyListWriter::write(value, maximumNesting);
}

std::optional<std::string> PropertyListCodec::xmlFrom(const PlistDictionary& root)
{
    return XmlPropertyListWriter::write(root, maximumNesting);
}

std::optional<PlistData> PropertyListCodec::binaryFrom(const PlistValue& value)
{
    Node root = nodeForWriting(value);
    if (!root) {
        return std::nullopt;
    }
    char* bytes = nullptr;
    uint32_t length = 0;
    plist_to_bin(root.get(), &bytes, &length);
    if (bytes == nullptr) {
        return std::nullopt;
    }
    PlistData data(reinterpret_cast<std::uint8_t*>(bytes),
                   reinterpret_cast<std::uint8_t*>(bytes) + length);
    plist_to_bin_free(bytes);
    return data;
}

} // namespace vexto
