#pragma once

#include <cstdint>

namespace vexto {

// Which side of each modifier is held, learnt from the modifier keys' own presses and releases
// (by their virtual key codes), for front ends whose key events only say which modifiers are
// held. A modifier held on a side never seen going down counts as the left one.
class ModifierSides {
public:
    // Modifier keys going down or up; any other key is ignored.
    void noteKey(std::uint16_t virtualKeyCode, bool down);
    // The device-independent word with the side bits of the modifiers it holds. Sides of
    // modifiers it no longer holds are forgotten: their releases may have gone to another window.
    std::uint64_t withDeviceBits(std::uint64_t independentFlags);

private:
    std::uint64_t heldSides_ = 0;
};

} // namespace vexto
