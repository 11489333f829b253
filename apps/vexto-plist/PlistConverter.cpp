#include "PlistConverter.hpp"

namespace vexto {

std::optional<PlistData> PlistConverter::convert(const PlistValue& value,
                                                 PropertyListCodec::Format format)
{
    // The XML text stands for the value: unlike comparing values, it tells NaN from NaN alike.
    const auto xml = PropertyListCodec::xmlFrom(value);
    if (!xml) {
        return std::nullopt;
    }
    PlistData bytes;
    if (format == PropertyListCodec::Format::Xml) {
        bytes.assign(xml->begin(), xml->end());
    } else if (auto binary = PropertyListCodec::binaryFrom(value)) {
        bytes = std::move(*binary);
    } else {
        return std::nullopt;
    }
    const auto reread = PropertyListCodec::read(bytes);
    if (!reread.value || PropertyListCodec::xmlFrom(*reread.value) != xml) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace vexto
