#pragma once

#include "platform/linux/ShortcutBinding.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexto {

// Xfce's keyboard shortcuts, from its xfconf channel file xfce4-keyboard-shortcuts.xml: the
// window manager's (xfwm4) and the commands', each from its "custom" set where the user has one,
// else from its "default" set, as Xfce reads them. Accelerators are in GTK's syntax; the action
// is the value (an xfwm4 action such as cycle_windows_key, or a command).
class XfceKeyBindings {
public:
    static constexpr std::size_t mostBindings = 4096;

    static std::optional<std::vector<ShortcutBinding>> parse(std::string_view xml);
    static std::vector<std::string> configurationFiles();
};

} // namespace vexto
