#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace vexto {

// Measures how deeply a property list nests before it is parsed. The parsers recurse once per
// level, so a hostile file of a few megabytes could otherwise exhaust the stack.
class PlistNestingProbe {
public:
    // True when every element of the XML text nests at most `maximumDepth` deep.
    // Comments, CDATA sections, processing instructions and the DOCTYPE are skipped.
    static bool xmlWithin(std::span<const std::uint8_t> bytes, int maximumDepth);

    // True when the binary property list ("bplist00") is well formed enough to walk, has no
    // reference cycle, and no container chain longer than `maximumDepth`.
    static bool binaryWithin(std::span<const std::uint8_t> bytes, int maximumDepth);
};

} // namespace vexto
