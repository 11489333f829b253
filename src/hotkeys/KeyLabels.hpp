#pragma once

#include "foundation/PlistValue.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vexto {

class Event;
class HotKeyRegistrar;
class KeyboardLayout;

// The hot-key subsystem's rules: how key codes and modifier words become what people read, when
// two modifier words match, and when a key combination may be taken as a hot key.

// Letters of the letter set (a-z, ä ö ü, their capitals) upper-cased, anything else lower-cased.
std::optional<std::string> KRVXKeyboardLabelCharacter(const std::optional<std::string>& text);

// The named keys first ("F5", "Space", "#9"), then the glyphs (⇥ ↵ ←), then the layout's
// character for the key. With `characterForm`, a key's character ("\t", " ") where it has one.
std::optional<std::string> KRVXStringForKeyCode(std::uint16_t keyCode, bool characterForm,
                                                const KeyboardLayout* layout);

// ⌃ ⌥ ⇧ ⌘ in that order for the modifiers held; with exact matching, Ⓛ and Ⓡ before each for the
// sides the device bits name.
std::string readableKeyStringPrefixWithModifierFlags(std::uint64_t flags, bool requireExact);
// The prefix, then the key's label, or the event's characters when the key has none.
std::string readableKeyString(const Event& event, bool requireExact, const KeyboardLayout* layout);

std::string shiftKeyLabelString();
std::string controlKeyLabelString();
std::string alternateKeyLabelString();
std::string commandKeyLabelString();

// The key part of a readable key string: the modifier glyphs and carets trimmed from both ends,
// but a lone caret kept ("⌃⌥^" gives "^").
std::string stringByTrimmingModifierPrefix(std::string_view text);

// Whether a stored modifier word and a candidate match; side bits count only when exact
// matching is on and both carry them.
bool KRVXIsModifierFlagsMatch(std::uint64_t stored, std::uint64_t candidate, bool requireExact,
                              bool ignoreCapsLock, bool ignoreFunctionKey);

std::uint32_t KRVXCarbonModifiersFromCocoaModifiers(std::uint64_t flags);

// Why a combination cannot be a hot key: the record that already holds it (its identifier and
// direction, under which the settings keep it), or, with no identifier, another program's hold.
struct HotKeyRefusal {
    std::string identifier;
    std::string direction;
    bool operator==(const HotKeyRefusal&) const = default;
};

// Refused when a hot-key record anywhere in the settings already holds the combination, or when
// the system will not register it (probed with the next identifier, then unregistered).
std::optional<HotKeyRefusal> KRVXRefusalOfHotKey(std::uint16_t keyCode, std::uint64_t flags,
                                                 bool requireExact, bool ignoreCapsLock,
                                                 bool ignoreFunctionKey,
                                                 const PlistDictionary& settings,
                                                 HotKeyRegistrar* registrar);
bool KRVXIsValidHotKey(std::uint16_t keyCode, std::uint64_t flags, bool requireExact,
                       bool ignoreCapsLock, bool ignoreFunctionKey, const PlistDictionary& settings,
                       HotKeyRegistrar* registrar);

// The identifier counter of the probe: 0 to 1,000,000, then 0 again.
std::uint32_t KRVXNextHotKeyIdentifier();
void KRVXResetHotKeyIdentifierForTesting(std::uint32_t next);

// Combinations that hold none of Shift, Control and Option take keys away from every other
// application: the person must confirm them.
bool KRVXNeedsReservationWarning(std::uint64_t flags);

} // namespace vexto
