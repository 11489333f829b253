#include "hotkeys/KeyLabels.hpp"

#include "foundation/HotKeyRecordFormat.hpp"
#include "foundation/TextEncoding.hpp"
#include "ports/HotKeyRegistrar.hpp"
#include "ports/KeyboardLayout.hpp"
#include "toolkit/Event.hpp"

#include <array>

namespace vexto {

namespace {

struct NamedKey {
    std::uint16_t keyCode;
    const char* character; // none: the key has no character of its own
    const char* label;
};

// Searched first, in this order.
constexpr std::array<NamedKey, 32> namedKeys{{
    {122, nullptr, "F1"},    {120, nullptr, "F2"},   {99, nullptr, "F3"},   {118, nullptr, "F4"},
    {96, nullptr, "F5"},     {97, nullptr, "F6"},    {98, nullptr, "F7"},   {100, nullptr, "F8"},
    {101, nullptr, "F9"},    {109, nullptr, "F10"},  {103, nullptr, "F11"}, {111, nullptr, "F12"},
    {105, nullptr, "F13"},   {107, nullptr, "F14"},  {113, nullptr, "F15"}, {106, nullptr, "F16"},
    {64, nullptr, "F17"},    {79, nullptr, "F18"},   {80, nullptr, "F19"},  {49, " ", "Space"},
    {53, nullptr, "Escape"}, {114, nullptr, "Help"}, {82, "0", "#0"},       {83, "1", "#1"},
    {84, "2", "#2"},         {85, "3", "#3"},        {86, "4", "#4"},       {87, "5", "#5"},
    {88, "6", "#6"},         {89, "7", "#7"},        {91, "8", "#8"},       {92, "9", "#9"},
}};

struct SymbolKey {
    std::uint16_t keyCode;
    const char* character;
    const char* glyph;
};

// Searched second. Return's character is a line feed, as the daemon expects.
constexpr std::array<SymbolKey, 13> symbolKeys{{
    {48, "\t", "\u21E5"},
    {51, nullptr, "\u232B"},
    {36, "\n", "\u21B5"},
    {76, nullptr, "\u2305"},
    {117, nullptr, "\u2326"},
    {123, nullptr, "\u2190"},
    {124, nullptr, "\u2192"},
    {125, nullptr, "\u2193"},
    {126, nullptr, "\u2191"},
    {115, nullptr, "\u2196"},
    {119, nullptr, "\u2198"},
    {116, nullptr, "\u21DE"},
    {121, nullptr, "\u21DF"},
}};

constexpr std::string_view letterSet =
    "abcdefghijklmnopqrstuvwxyz\u00E4\u00F6\u00FCABCDEFGHIJKLMNOPQRSTUVWXYZ\u00C4\u00D6\u00DC";

constexpr std::string_view shiftGlyph = "\u21E7";
constexpr std::string_view controlGlyph = "\u2303";
constexpr std::string_view optionGlyph = "\u2325";
constexpr std::string_view commandGlyph = "\u2318";
constexpr std::string_view leftMarker = "\u24C1";
constexpr std::string_view rightMarker = "\u24C7";

// Case mapping for the scripts keyboard layouts give labels in: Latin (ASCII, Latin-1 and
// Extended-A), Greek and Cyrillic. Other characters stay as they are.
char32_t caseMapped(char32_t c, bool upper)
{
    const auto shift = [&](char32_t lowerStart, char32_t upperStart, char32_t count) -> char32_t {
        if (upper && c >= lowerStart && c < lowerStart + count) {
            return c - lowerStart + upperStart;
        }
        if (!upper && c >= upperStart && c < upperStart + count) {
            return c - upperStart + lowerStart;
        }
        return 0;
    };
    const auto pairs = [&](char32_t first, char32_t last, bool upperEven) -> char32_t {
        if (c < first || c > last) {
            return 0;
        }
        const bool isUpper = ((c % 2) == 0) == upperEven;
        if (upper && !isUpper) {
            return c - 1;
        }
        if (!upper && isUpper) {
            return c + 1;
        }
        return c;
    };
    if (c == 0xD7 || c == 0xF7) {
        return c; // × and ÷
    }
    if (c == 0x3C2) {
        return upper ? 0x3A3 : c; // final sigma
    }
    for (const char32_t mapped :
         {shift(U'a', U'A', 26), shift(0xE0, 0xC0, 31), shift(0x3B1, 0x391, 25),
          shift(0x430, 0x410, 32), shift(0x450, 0x400, 16), pairs(0x100, 0x12F, true),
          pairs(0x132, 0x137, true), pairs(0x139, 0x148, false), pairs(0x14A, 0x177, true),
          pairs(0x179, 0x17E, false)}) {
        if (mapped != 0) {
            return mapped;
        }
    }
    return c;
}

std::string caseMapped(std::string_view text, bool upper)
{
    std::string out;
    for (const char16_t unit : TextEncoding::utf16FromUtf8(text)) {
        TextEncoding::appendUtf8(out, caseMapped(unit, upper));
    }
    return out;
}

std::uint32_t nextIdentifier = 0;

} // namespace

std::optional<std::string> KRVXKeyboardLabelCharacter(const std::optional<std::string>& text)
{
    if (!text) {
        return std::nullopt;
    }
    return caseMapped(*text, letterSet.find(*text) != std::string_view::npos);
}

std::optional<std::string> KRVXStringForKeyCode(std::uint16_t keyCode, bool characterForm,
                                                const KeyboardLayout* layout)
{
    for (const NamedKey& key : namedKeys) {
        if (key.keyCode == keyCode) {
            return std::string(characterForm && key.character ? key.character : key.label);
        }
    }
    for (const SymbolKey& key : symbolKeys) {
        if (key.keyCode == keyCode) {
            return std::string(characterForm && key.character ? key.character : key.glyph);
        }
    }
    const auto unit = layout != nullptr ? layout->characterForKeyCode(keyCode) : std::nullopt;
    if (!unit) {
        return std::nullopt;
    }
    const std::string character = TextEncoding::utf8FromUtf16(std::u16string(1, *unit));
    return characterForm ? caseMapped(character, false) : *KRVXKeyboardLabelCharacter(character);
}

std::string readableKeyStringPrefixWithModifierFlags(std::uint64_t flags, bool requireExact)
{
    struct Modifier {
        std::uint64_t bit;
        std::uint64_t left;
        std::uint64_t right;
        std::string_view glyph;
    };
    static constexpr Modifier order[] = {
        {Event::controlKeyMask, Event::leftControlKeyMask, Event::rightControlKeyMask,
         controlGlyph},
        {Event::optionKeyMask, Event::leftOptionKeyMask, Event::rightOptionKeyMask, optionGlyph},
        {Event::shiftKeyMask, Event::leftShiftKeyMask, Event::rightShiftKeyMask, shiftGlyph},
        {Event::commandKeyMask, Event::leftCommandKeyMask, Event::rightCommandKeyMask,
         commandGlyph},
    };
    std::string prefix;
    for (const Modifier& modifier : order) {
        if ((flags & modifier.bit) == 0) {
            continue;
        }
        if (requireExact && (flags & modifier.left) != 0) {
            prefix += leftMarker;
        }
        if (requireExact && (flags & modifier.right) != 0) {
            prefix += rightMarker;
        }
        prefix += modifier.glyph;
    }
    return prefix;
}

std::string readableKeyString(const Event& event, bool requireExact, const KeyboardLayout* layout)
{
    const auto label = KRVXStringForKeyCode(event.keyCode(), false, layout);
    return readableKeyStringPrefixWithModifierFlags(event.modifierFlags(), requireExact) +
           (label ? *label : *KRVXKeyboardLabelCharacter(event.charactersIgnoringModifiers()));
}

std::string shiftKeyLabelString()
{
    return std::string(shiftGlyph);
}

std::string controlKeyLabelString()
{
    return std::string(controlGlyph);
}

std::string alternateKeyLabelString()
{
    return std::string(optionGlyph);
}

std::string commandKeyLabelString()
{
    return std::string(commandGlyph);
}

std::string stringByTrimmingModifierPrefix(std::string_view text)
{
    static const std::array<std::string_view, 7> trimmed = {
        shiftGlyph, controlGlyph, optionGlyph, commandGlyph, leftMarker, rightMarker, "^"};
    const auto trimOne = [&](bool front) {
        for (std::string_view piece : trimmed) {
            if (front ? text.starts_with(piece) : text.ends_with(piece)) {
                front ? text.remove_prefix(piece.size()) : text.remove_suffix(piece.size());
                return true;
            }
        }
        return false;
    };
    const std::string_view untrimmed = text;
    while (trimOne(true)) {
    }
    while (trimOne(false)) {
    }
    if (!text.empty()) {
        return std::string(text);
    }
    return untrimmed.ends_with('^') ? "^" : "";
}

bool KRVXIsModifierFlagsMatch(std::uint64_t stored, std::uint64_t candidate, bool requireExact,
                              bool ignoreCapsLock, bool ignoreFunctionKey)
{
    constexpr std::uint64_t deviceIndependent = 0xFF0000;
    if (ignoreCapsLock) {
        stored |= Event::capsLockKeyMask;
        candidate |= Event::capsLockKeyMask;
    }
    if (ignoreFunctionKey) {
        stored |= Event::functionKeyMask;
        candidate |= Event::functionKeyMask;
    }
    const bool plain = ((stored ^ candidate) & deviceIndependent) == 0;
    if (!requireExact || (stored & Event::sideKeyMask) == 0 ||
        (candidate & Event::sideKeyMask) == 0) {
        return plain;
    }
    return ((stored ^ candidate) & (deviceIndependent | Event::sideKeyMask)) == 0;
}

std::uint32_t KRVXCarbonModifiersFromCocoaModifiers(std::uint64_t flags)
{
    std::uint32_t carbon = 0;
    carbon |= (flags & Event::shiftKeyMask) != 0 ? 0x0200 : 0;
    carbon |= (flags & Event::controlKeyMask) != 0 ? 0x1000 : 0;
    carbon |= (flags & Event::commandKeyMask) != 0 ? 0x0100 : 0;
    carbon |= (flags & Event::optionKeyMask) != 0 ? 0x0800 : 0;
    carbon |= (flags & Event::functionKeyMask) != 0 ? 0x20000 : 0;
    return carbon;
}

std::uint32_t KRVXNextHotKeyIdentifier()
{
    const std::uint32_t taken = nextIdentifier;
    nextIdentifier = taken + 1 > 1000000 ? 0 : taken + 1;
    return taken;
}

void KRVXResetHotKeyIdentifierForTesting(std::uint32_t next)
{
    nextIdentifier = next;
}

std::optional<HotKeyRefusal> KRVXRefusalOfHotKey(std::uint16_t keyCode, std::uint64_t flags,
                                                 bool requireExact, bool ignoreCapsLock,
                                                 bool ignoreFunctionKey,
                                                 const PlistDictionary& settings,
                                                 HotKeyRegistrar* registrar)
{
    const auto holdsTheCombination = [&](const PlistValue& object) {
        const PlistDictionary* record = object.asDictionary();
        if (record == nullptr) {
            return false;
        }
        // A missing or unreadable field reads as 0, as a missing number does.
        const auto number = [&](std::string_view key) {
            const auto found = record->find(key);
            return found != record->end() ? found->second.integerValue().value_or(0) : 0;
        };
        return static_cast<std::uint16_t>(number(hotkeyrecord::keyCode)) == keyCode &&
               KRVXIsModifierFlagsMatch(static_cast<std::uint32_t>(number(hotkeyrecord::modifiers)),
                                        flags, requireExact, ignoreCapsLock, ignoreFunctionKey);
    };
    for (const auto& [key, value] : settings) {
        if (const PlistDictionary* table = value.asDictionary()) {
            for (const auto& [direction, record] : *table) {
                if (holdsTheCombination(record)) {
                    return HotKeyRefusal{key, direction};
                }
            }
        } else if (const PlistArray* list = value.asArray()) {
            for (const PlistValue& record : *list) {
                if (holdsTheCombination(record)) {
                    return HotKeyRefusal{key, {}};
                }
            }
        }
    }
    const std::uint32_t identifier = KRVXNextHotKeyIdentifier();
    if (registrar == nullptr) {
        return std::nullopt;
    }
    if (!registrar->registerHotKey(keyCode, KRVXCarbonModifiersFromCocoaModifiers(flags),
                                   identifier)) {
        return HotKeyRefusal{};
    }
    registrar->unregisterHotKey(identifier);
    return std::nullopt;
}

bool KRVXIsValidHotKey(std::uint16_t keyCode, std::uint64_t flags, bool requireExact,
                       bool ignoreCapsLock, bool ignoreFunctionKey, const PlistDictionary& settings,
                       HotKeyRegistrar* registrar)
{
    return !KRVXRefusalOfHotKey(keyCode, flags, requireExact, ignoreCapsLock, ignoreFunctionKey,
                                settings, registrar);
}

bool KRVXNeedsReservationWarning(std::uint64_t flags)
{
    return (flags & (Event::shiftKeyMask | Event::controlKeyMask | Event::optionKeyMask)) == 0;
}

} // namespace vexto
