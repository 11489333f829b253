#pragma once

#include <functional>
#include <optional>
#include <string>

namespace vexto {

// One shortcut a desktop's configuration binds: a keysym name with modifiers
// (ShortcutOwners::Modifier bits), and what it does, in the configuration's own words.
struct ShortcutBinding {
    std::string keysym;
    unsigned modifiers = 0;
    std::string action = {};

    bool operator==(const ShortcutBinding&) const = default;
};

// The X key code a keysym name is on, as the window manager grabs it; none for a name the
// keymap lacks.
using KeyOfKeysym = std::function<std::optional<unsigned>(const std::string& keysym)>;

} // namespace vexto
