#pragma once

#include "cycling/HotKeyBinding.hpp"

#include <span>
#include <string_view>
#include <vector>

namespace vexto {

class LayeredSettings;

// Which setting holds the hot keys of which action, and the hot keys the settings hold.
class HotKeyBindings {
public:
    struct Row {
        std::string_view settingKey;
        DaemonAction action;
    };
    static std::span<const Row> table();

    // Every usable record of every hot-key table, in the table's order, Forward before Backward.
    // A record without a key code, or whose key code or modifiers are not numbers, is left out.
    static std::vector<HotKeyBinding> fromSettings(const LayeredSettings& settings);
};

} // namespace vexto
