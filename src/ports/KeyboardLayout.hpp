#pragma once

#include <cstdint>
#include <optional>

namespace vexto {

// The current keyboard layout: what a key gives with no modifiers held.
class KeyboardLayout {
public:
    virtual ~KeyboardLayout() = default;
    // The one UTF-16 unit the key (a platform virtual key code) gives unshifted; none for a dead
    // key, a key that gives nothing or more than one unit, or when there is no layout.
    virtual std::optional<char16_t> characterForKeyCode(std::uint16_t keyCode) const = 0;
};

} // namespace vexto
