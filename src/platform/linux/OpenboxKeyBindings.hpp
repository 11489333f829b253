#pragma once

#include "platform/linux/ShortcutBinding.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexto {

// The key bindings of an Openbox configuration (rc.xml): each <keybind key="A-Tab"> of its
// <keyboard> section, with the name of its first action. A chain ("C-a b") is held by Openbox
// from its first key on, so only that key is kept.
class OpenboxKeyBindings {
public:
    static constexpr std::size_t mostBindings = 4096;

    // None when the text is no usable configuration (not XML, too large, too deep).
    static std::optional<std::vector<ShortcutBinding>> parse(std::string_view xml);
    // $XDG_CONFIG_HOME/openbox/rc.xml (else ~/.config), then each of $XDG_CONFIG_DIRS (else
    // /etc/xdg): the first that exists is Openbox's.
    static std::vector<std::string> configurationFiles();
    // Openbox's own key syntax: modifiers S, C, A, W (and M for Alt, Mod1 and Mod4) joined by
    // dashes before a keysym. None for a modifier no recorded combination can carry (Hyper,
    // Mod2, Mod3, Mod5) or an empty key. The binding has no action yet.
    static std::optional<ShortcutBinding> parseKey(std::string_view text);
};

} // namespace vexto
