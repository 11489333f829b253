#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vexto {

// A shortcut as GNOME's settings write it, in GTK's accelerator syntax: modifiers in angle
// brackets, then a keysym name ("<Super>Tab", "<Primary><Alt>Delete", "<Shift><Alt>Tab").
// Modifier names are compared without case, as GTK does; <Primary>, <Control>, <Ctrl> and <Ctl>
// are Control, <Alt>, <Mod1> and <Meta> are Alt, <Super> and <Mod4> are Super; <Release> is passed
// over. None for <Hyper> or another modifier a recorded combination cannot carry, for an empty
// key, and for an unclosed bracket.
struct GtkAccelerator {
    std::string keysym;
    unsigned modifiers = 0; // ShortcutOwners::Modifier bits

    static std::optional<GtkAccelerator> parse(std::string_view text);
    bool operator==(const GtkAccelerator&) const = default;
};

} // namespace vexto
