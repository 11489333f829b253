#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vexto {

// A key press written as a script writes it: modifiers ("cmd", "opt", "ctrl", "shift", "fn",
// "caps", or a side: "lcmd", "rshift", ...) joined by "+", then a key name ("a"-"z", "0"-"9",
// "space", "tab", "return", "escape", "delete", "f1"-"f19", "left", "right", "up", "down") or
// "keycode=N". Key codes and modifier bits are the platform's.
struct KeyCombination {
    std::uint16_t keyCode = 0;
    std::uint64_t modifierFlags = 0;
    std::string characters;
    std::string charactersIgnoringModifiers;

    static std::optional<KeyCombination> parse(std::string_view text);
};

} // namespace vexto
