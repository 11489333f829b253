#pragma once

#include "foundation/PlistValue.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace vexto {

// Reads XML and binary property lists and writes them in the platform's published layouts.
// Nothing here throws: unusable input gives no value and a one-line reason.
class PropertyListCodec {
public:
    // Bounds on what is accepted. The pane's own files are a few kilobytes and a few levels deep.
    static constexpr std::size_t maximumInputBytes = 16 * 1024 * 1024;
    static constexpr int maximumNesting = 512;
    // Every value counts, also each time a binary list refers to the same object again.
    static constexpr std::size_t maximumValues = 100000;

    enum class Format { Xml, Binary };

    struct ReadResult {
        std::optional<PlistValue> value;
        Format format = Format::Xml;
        std::string error; // empty when a value was read
    };

    static ReadResult read(std::span<const std::uint8_t> bytes);
    static ReadResult readFile(const std::string& path);

    // XML with the standard header and DOCTYPE, tab indentation and keys in the platform's order.
    // None when the value nests deeper than `maximumNesting`.
    static std::optional<std::string> xmlFrom(const PlistValue& value);
    static std::optional<std::string> xmlFrom(const PlistDictionary& root);
    // A binary property list ("bplist00"); none when the value nests too deeply.
    static std::optional<PlistData> binaryFrom(const PlistValue& value);
};

} // namespace vexto
