#include "hotkeys/KeyLabels.hpp"

#include "ports/HotKeyRegistrar.hpp"
#include "ports/KeyboardLayout.hpp"
#include "toolkit/Event.hpp"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace vexto {
namespace {

// A layout as a table: key 0 gives "a", 41 ";" (or "ö" as German), 33 is a dead key.
class TableLayout : public KeyboardLayout {
public:
    explicit TableLayout(std::map<std::uint16_t, char16_t> keys) : keys_(std::move(keys)) {}
    std::optional<char16_t> characterForKeyCode(std::uint16_t keyCode) const override
    {
        const auto found = keys_.find(keyCode);
        return found != keys_.end() ? std::optional<char16_t>(found->second) : std::nullopt;
    }

private:
    std::map<std::uint16_t, char16_t> keys_;
};

class ProbeRegistrar : public HotKeyRegistrar {
public:
    std::set<std::pair<std::uint16_t, std::uint32_t>> taken;
    std::vector<std::uint32_t> identifiers;
    int registered = 0;

    bool registerHotKey(std::uint16_t keyCode, std::uint32_t modifiers, std::uint32_t id) override
    {
        identifiers.push_back(id);
        if (taken.count({keyCode, modifiers}) != 0) {
            return false;
        }
        ++registered;
        return true;
    }
    void unregisterHotKey(std::uint32_t) override { --registered; }
};

const TableLayout us({{0, u'a'}, {41, u';'}, {90, u'9'}});
const TableLayout german({{0, u'a'}, {41, u'\u00F6'}});

TEST(KeyLabelsTest, NamedKeysThenGlyphsThenTheLayout)
{
    EXPECT_EQ(KRVXStringForKeyCode(49, false, &us), "Space");
    EXPECT_EQ(KRVXStringForKeyCode(49, true, &us), " ");
    EXPECT_EQ(KRVXStringForKeyCode(53, false, &us), "Escape");
    EXPECT_EQ(KRVXStringForKeyCode(53, true, &us), "Escape") << "no character of its own";
    EXPECT_EQ(KRVXStringForKeyCode(92, false, &us), "#9");
    EXPECT_EQ(KRVXStringForKeyCode(90, false, &us), "9") << "keypad 8's neighbour: the layout";
    EXPECT_EQ(KRVXStringForKeyCode(36, false, &us), "\u21B5");
    EXPECT_EQ(KRVXStringForKeyCode(36, true, &us), "\n") << "a line feed, not a return";
    EXPECT_EQ(KRVXStringForKeyCode(48, true, &us), "\t");
    EXPECT_EQ(KRVXStringForKeyCode(0, false, &us), "A");
    EXPECT_EQ(KRVXStringForKeyCode(0, true, &us), "a");
    EXPECT_EQ(KRVXStringForKeyCode(41, false, &german), "\u00D6");
    EXPECT_EQ(KRVXStringForKeyCode(41, false, &us), ";");
    EXPECT_FALSE(KRVXStringForKeyCode(33, false, &us)) << "a dead key gives nothing";
    EXPECT_FALSE(KRVXStringForKeyCode(0, false, nullptr)) << "no layout";
}

TEST(KeyLabelsTest, OnlyTheLetterSetIsUpperCased)
{
    EXPECT_EQ(KRVXKeyboardLabelCharacter(std::string("\u00E4")), "\u00C4");
    EXPECT_EQ(KRVXKeyboardLabelCharacter(std::string("z")), "Z");
    EXPECT_EQ(KRVXKeyboardLabelCharacter(std::string("\u00DF")), "\u00DF") << "ß";
    EXPECT_EQ(KRVXKeyboardLabelCharacter(std::string("\u00C9")), "\u00E9") << "É is lower-cased";
    EXPECT_EQ(KRVXKeyboardLabelCharacter(std::string("\u0416")), "\u0436") << "Cyrillic Zhe";
    EXPECT_EQ(KRVXKeyboardLabelCharacter(std::string("1")), "1");
    EXPECT_FALSE(KRVXKeyboardLabelCharacter(std::nullopt));
}

TEST(KeyLabelsTest, TheReadableStringFallsBackToTheEventsCharactersForADeadKey)
{
    const auto dead =
        Event::key(Event::Type::KeyDown, 33, Event::optionKeyMask, "\u00B4", "\u00B4");
    EXPECT_EQ(readableKeyString(dead, false, &us), "\u2325\u00B4");
    const auto tab =
        Event::key(Event::Type::KeyDown, 48, Event::optionKeyMask | 0x0020, "\t", "\t");
    EXPECT_EQ(readableKeyString(tab, true, &us), "\u24C1\u2325\u21E5");
}

TEST(KeyLabelsTest, ThePrefixNamesSidesOnlyUnderExactMatching)
{
    const std::uint64_t flags = 0x1C0000 | 0x0001 | 0x0020;
    EXPECT_EQ(readableKeyStringPrefixWithModifierFlags(flags, true),
              "\u24C1\u2303\u24C1\u2325\u2318");
    EXPECT_EQ(readableKeyStringPrefixWithModifierFlags(flags, false), "\u2303\u2325\u2318");
    // Both sides held: left before right. Caps Lock and Function add nothing.
    EXPECT_EQ(
        readableKeyStringPrefixWithModifierFlags(Event::shiftKeyMask | 0x2 | 0x4 | 0x810000, true),
        "\u24C1\u24C7\u21E7");
    EXPECT_EQ(controlKeyLabelString() + alternateKeyLabelString() + shiftKeyLabelString() +
                  commandKeyLabelString(),
              "\u2303\u2325\u21E7\u2318");
}

TEST(KeyLabelsTest, TrimmingKeepsTheKeyAndALoneCaret)
{
    EXPECT_EQ(stringByTrimmingModifierPrefix("\u2303\u2325^"), "^");
    EXPECT_EQ(stringByTrimmingModifierPrefix("\u2318\u2325"), "");
    EXPECT_EQ(stringByTrimmingModifierPrefix("\u2318F1"), "F1");
    EXPECT_EQ(stringByTrimmingModifierPrefix("\u24C1\u2303\u21E5"), "\u21E5");
}

TEST(KeyLabelsTest, SidesCompareOnlyWhenExactAndBothHaveThem)
{
    const std::uint64_t left = 0x100008;
    const std::uint64_t right = 0x100010;
    const std::uint64_t plain = 0x100000;
    for (bool exact : {false, true}) {
        EXPECT_EQ(KRVXIsModifierFlagsMatch(left, right, exact, true, true), !exact);
        EXPECT_TRUE(KRVXIsModifierFlagsMatch(left, plain, exact, true, true));
        EXPECT_TRUE(KRVXIsModifierFlagsMatch(plain, left, exact, true, true));
        EXPECT_TRUE(KRVXIsModifierFlagsMatch(plain, right, exact, true, true));
    }
    EXPECT_TRUE(KRVXIsModifierFlagsMatch(0x110000, 0x100000, false, true, false));
    EXPECT_FALSE(KRVXIsModifierFlagsMatch(0x110000, 0x100000, false, false, false));
    EXPECT_TRUE(KRVXIsModifierFlagsMatch(0x900000, 0x100000, false, false, true));
    EXPECT_FALSE(KRVXIsModifierFlagsMatch(0x900000, 0x100000, false, false, false));
}

TEST(KeyLabelsTest, CarbonModifiersKeepTheFiveModifiersOnly)
{
    EXPECT_EQ(KRVXCarbonModifiersFromCocoaModifiers(0x20000), 0x0200u);
    EXPECT_EQ(KRVXCarbonModifiersFromCocoaModifiers(0x40000), 0x1000u);
    EXPECT_EQ(KRVXCarbonModifiersFromCocoaModifiers(0x80000), 0x0800u);
    EXPECT_EQ(KRVXCarbonModifiersFromCocoaModifiers(0x100000), 0x0100u);
    EXPECT_EQ(KRVXCarbonModifiersFromCocoaModifiers(0x800000), 0x20000u);
    EXPECT_EQ(KRVXCarbonModifiersFromCocoaModifiers(0x10000 | 0x207F), 0u);
}

TEST(KeyLabelsTest, TheProbeIdentifiersCycleUpToAMillion)
{
    KRVXResetHotKeyIdentifierForTesting(999999);
    EXPECT_EQ(KRVXNextHotKeyIdentifier(), 999999u);
    EXPECT_EQ(KRVXNextHotKeyIdentifier(), 1000000u);
    EXPECT_EQ(KRVXNextHotKeyIdentifier(), 0u);
    EXPECT_EQ(KRVXNextHotKeyIdentifier(), 1u);
}

PlistDictionary record(std::string keyCode, std::string modifiers)
{
    return PlistDictionary{{"Key Code", std::move(keyCode)},
                           {"Modifiers", std::move(modifiers)},
                           {"Visual Representation", "x"},
                           {"Character", "x"}};
}

TEST(KeyLabelsTest, ACombinationHeldAnywhereOrByAnotherClientIsRefused)
{
    KRVXResetHotKeyIdentifierForTesting(0);
    const PlistDictionary settings{
        {"Cycle All Windows", PlistDictionary{{"Forward", record("48", "524288")},
                                              {"Backward", record("48", "655360")}}},
        {"Panel Delay", 200},
        {"Odd List", PlistArray{record("96", "0"), PlistValue(7)}},
    };
    ProbeRegistrar registrar;
    // ⌥Tab is held by a slot (the slot being replaced is no exception); so is F5 from a list.
    EXPECT_FALSE(KRVXIsValidHotKey(48, 0x80000, false, true, true, settings, &registrar));
    EXPECT_FALSE(KRVXIsValidHotKey(96, 0, false, true, true, settings, &registrar));
    EXPECT_TRUE(registrar.identifiers.empty()) << "clashes are refused before the probe";
    // ⌃Tab is free here, but another client holds it.
    registrar.taken.insert({48, 0x1000});
    EXPECT_FALSE(KRVXIsValidHotKey(48, 0x40000, false, true, true, settings, &registrar));
    EXPECT_TRUE(KRVXIsValidHotKey(48, 0x100000, false, true, true, settings, &registrar));
    EXPECT_EQ(registrar.identifiers, (std::vector<std::uint32_t>{0, 1}));
    EXPECT_EQ(registrar.registered, 0) << "the probe unregisters what it registered";
}

TEST(KeyLabelsTest, CombinationsWithoutShiftControlOrOptionNeedConfirming)
{
    EXPECT_TRUE(KRVXNeedsReservationWarning(Event::commandKeyMask));        // ⌘Space
    EXPECT_FALSE(KRVXNeedsReservationWarning(Event::controlKeyMask));       // ⌃Space
    EXPECT_TRUE(KRVXNeedsReservationWarning(0));                            // F5
    EXPECT_FALSE(KRVXNeedsReservationWarning(Event::shiftKeyMask));         // ⇧F5
    EXPECT_TRUE(KRVXNeedsReservationWarning(Event::functionKeyMask | 0x8)); // fn alone
}

} // namespace
} // namespace vexto
