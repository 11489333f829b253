#include "toolkit/ModifierSides.hpp"

#include "toolkit/Event.hpp"

namespace vexto {

namespace {

struct ModifierKeys {
    std::uint64_t independentMask;
    std::uint16_t leftKeyCode;
    std::uint16_t rightKeyCode;
    std::uint64_t leftDeviceBit;
    std::uint64_t rightDeviceBit;
};

constexpr ModifierKeys modifierKeys[] = {
    {Event::controlKeyMask, 0x3B, 0x3E, Event::leftControlKeyMask, Event::rightControlKeyMask},
    {Event::shiftKeyMask, 0x38, 0x3C, Event::leftShiftKeyMask, Event::rightShiftKeyMask},
    {Event::commandKeyMask, 0x37, 0x36, Event::leftCommandKeyMask, Event::rightCommandKeyMask},
    {Event::optionKeyMask, 0x3A, 0x3D, Event::leftOptionKeyMask, Event::rightOptionKeyMask},
};

} // namespace

void ModifierSides::noteKey(std::uint16_t virtualKeyCode, bool down)
{
    for (const auto& modifier : modifierKeys) {
        std::uint64_t bit = 0;
        if (virtualKeyCode == modifier.leftKeyCode) {
            bit = modifier.leftDeviceBit;
        } else if (virtualKeyCode == modifier.rightKeyCode) {
            bit = modifier.rightDeviceBit;
        }
        if (bit != 0) {
            heldSides_ = down ? (heldSides_ | bit) : (heldSides_ & ~bit);
            return;
        }
    }
}

std::uint64_t ModifierSides::withDeviceBits(std::uint64_t independentFlags)
{
    std::uint64_t word = independentFlags;
    for (const auto& modifier : modifierKeys) {
        const std::uint64_t bothSides = modifier.leftDeviceBit | modifier.rightDeviceBit;
        if ((independentFlags & modifier.independentMask) == 0) {
            heldSides_ &= ~bothSides;
            continue;
        }
        const std::uint64_t seen = heldSides_ & bothSides;
        word |= seen != 0 ? seen : modifier.leftDeviceBit;
    }
    return word;
}

} // namespace vexto
