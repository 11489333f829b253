#pragma once

#include "platform/linux/ShortcutBinding.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexto {

// KDE Plasma's global shortcuts as kglobalshortcutsrc keeps them: one group a component
// ([kwin]), one line an action, "Action=active,default,Friendly name", the active shortcuts
// separated by tabs in Qt's portable key text ("Alt+Tab", "Meta+Shift+Q", "Ctrl+Alt+T"). The
// action is named by its friendly name, else its key.
class KdeKeyBindings {
public:
    static constexpr std::size_t mostBindings = 4096;

    static std::optional<std::vector<ShortcutBinding>> parse(std::string_view text);
    // One shortcut in Qt's portable text; none for a modifier a recorded combination cannot
    // carry (Keypad) or an empty key.
    static std::optional<ShortcutBinding> parseShortcut(std::string_view text);
    static std::vector<std::string> configurationFiles();
};

} // namespace vexto
