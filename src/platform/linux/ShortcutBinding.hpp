#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vexto {

// One shortcut a desktop's configuration binds: a keysym name with modifiers
// (ShortcutOwners::Modifier bits), and what it does, in the configuration's own words.
struct ShortcutBinding {
    std::string keysym;
    unsigned modifiers = 0;
    std::string action = {};

    // Modifier names joined by `separator` before a keysym ("S-A-Tab", "Mod4+Shift+q"), as
    // window managers write them; `modifierNamed` gives a name's bits, none for a name no
    // recorded combination can carry (the whole is then none, as is an empty key). A separator
    // at the very end is the key itself ("Ctrl++").
    static std::optional<ShortcutBinding>
    fromJoinedNames(std::string_view text, char separator,
                    const std::function<std::optional<unsigned>(std::string_view)>& modifierNamed);

    bool operator==(const ShortcutBinding&) const = default;
};

// The X key code a keysym name is on, as the window manager grabs it; none for a name the
// keymap lacks.
using KeyOfKeysym = std::function<std::optional<unsigned>(const std::string& keysym)>;

} // namespace vexto
