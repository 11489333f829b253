#pragma once

#include <cstdint>
#include <optional>

namespace vexto {

// The platform's virtual key codes and the Linux input (evdev) codes of the same physical keys,
// one table both ways. X key codes and XKB key codes are evdev codes plus 8.
class EvdevKeyCodes {
public:
    static std::optional<std::uint16_t> virtualKeyForEvdev(std::uint16_t evdev);
    static std::optional<std::uint16_t> evdevForVirtualKey(std::uint16_t virtualKey);
    // The same through X (and XKB) key codes, which are evdev codes plus 8.
    static std::optional<std::uint16_t> virtualKeyForXKeyCode(std::uint32_t xKeyCode);
    static std::optional<std::uint32_t> xKeyCodeForVirtualKey(std::uint16_t virtualKey);
    // The keypad's keys, which give their digits with Num Lock on.
    static bool isKeypad(std::uint16_t virtualKey);
};

} // namespace vexto
