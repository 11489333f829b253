#pragma once

#include "foundation/Color.hpp"

#include <optional>
#include <string_view>

namespace vexto {

// The colours the panel is drawn with while the settings hold none of their own. The pane shows
// them in its wells, and the daemon draws its panel with them.
class AppearanceDefaults {
public:
    // None for a key without a fixed default: the key badge follows the selection colour, and
    // the Space badge colour depends on the system.
    static std::optional<Color> colorForKey(std::string_view key);
};

} // namespace vexto
