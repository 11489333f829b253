#pragma once

#include "platform/linux/ShortcutBinding.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexto {

// The key bindings of an i3 configuration: each `bindsym` outside a mode block (bindings of a
// mode are held only while the mode is on), with `set $name value` variables put in, as
// `bindsym $mod+Shift+q kill` reads. The action is the command, as the file words it.
class I3KeyBindings {
public:
    static constexpr std::size_t mostBindings = 4096;

    // None for a text that holds no line i3 would read (not text at all).
    static std::optional<std::vector<ShortcutBinding>> parse(std::string_view text);
    // A combination as bindsym writes it: modifiers Mod1 (Alt), Mod4 (Super), Shift, Control
    // or Ctrl joined by '+' before a keysym; none for Mod2, Mod3, Mod5 or an empty key.
    static std::optional<ShortcutBinding> parseCombination(std::string_view text);
    // Where i3 looks, in its order: the XDG folders' i3/config, then ~/.i3/config and
    // /etc/i3/config.
    static std::vector<std::string> configurationFiles();
};

} // namespace vexto
