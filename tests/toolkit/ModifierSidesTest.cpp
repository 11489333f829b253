#include "toolkit/ModifierSides.hpp"

#include "toolkit/Event.hpp"

#include <gtest/gtest.h>

namespace vexto {
namespace {

struct ModifierCase {
    std::uint64_t independent;
    std::uint16_t leftKey;
    std::uint16_t rightKey;
    std::uint64_t leftBit;
    std::uint64_t rightBit;
};

// Each modifier, its keys' virtual key codes and the side bits they set.
constexpr ModifierCase modifierCases[] = {
    {Event::controlKeyMask, 0x3B, 0x3E, 0x0001, 0x2000},
    {Event::shiftKeyMask, 0x38, 0x3C, 0x0002, 0x0004},
    {Event::commandKeyMask, 0x37, 0x36, 0x0008, 0x0010},
    {Event::optionKeyMask, 0x3A, 0x3D, 0x0020, 0x0040},
};

TEST(ModifierSidesTest, EachModifierKeySetsItsOwnSideUntilReleased)
{
    for (const auto& modifier : modifierCases) {
        ModifierSides sides;
        sides.noteKey(modifier.rightKey, true);
        EXPECT_EQ(sides.withDeviceBits(modifier.independent),
                  modifier.independent | modifier.rightBit)
            << modifier.rightKey;
        sides.noteKey(modifier.leftKey, true);
        EXPECT_EQ(sides.withDeviceBits(modifier.independent),
                  modifier.independent | modifier.leftBit | modifier.rightBit)
            << modifier.leftKey;
        sides.noteKey(modifier.leftKey, false);
        sides.noteKey(modifier.rightKey, false);
        // Held with neither side seen going down: the left side stands in.
        EXPECT_EQ(sides.withDeviceBits(modifier.independent),
                  modifier.independent | modifier.leftBit)
            << modifier.rightKey;
    }
}

TEST(ModifierSidesTest, OnlyModifierKeysAndHeldModifiersCount)
{
    ModifierSides sides;
    sides.noteKey(0x00, true); // the A key
    sides.noteKey(0x3C, true); // right Shift, but only Control is held
    EXPECT_EQ(sides.withDeviceBits(Event::controlKeyMask), Event::controlKeyMask | 0x0001);
    EXPECT_EQ(sides.withDeviceBits(0), 0u);
}

TEST(ModifierSidesTest, AModifierNoLongerHeldForgetsItsSide)
{
    // The right Command key went down here but came up in another window.
    ModifierSides sides;
    sides.noteKey(0x36, true);
    EXPECT_EQ(sides.withDeviceBits(Event::shiftKeyMask), Event::shiftKeyMask | 0x0002);
    EXPECT_EQ(sides.withDeviceBits(Event::commandKeyMask), Event::commandKeyMask | 0x0008);
}

} // namespace
} // namespace vexto
