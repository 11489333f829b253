#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace vexto {

// Walks a binary property list ("bplist00") before libplist is given it, without recursion.
// libplist 2.2 parses recursively, copies an object once for every reference to it (so a few
// hundred bytes of shared references expand exponentially), and aborts on strings holding U+0000.
// Everything it would trip over is refused here first.
class BinaryPropertyListGuard {
public:
    struct Limits {
        int maximumNesting = 512;
        std::size_t maximumValues = 100000; // after shared references are followed
    };

    // None when the bytes are safe to hand to libplist; otherwise the reason they are not.
    static std::optional<std::string> check(std::span<const std::uint8_t> bytes,
                                            const Limits& limits);
};

} // namespace vexto
