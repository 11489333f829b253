#include "settings/AppearanceDefaults.hpp"

#include "settings/SettingKeys.hpp"

namespace vexto {

namespace keys = settingkeys;

std::optional<Color> AppearanceDefaults::colorForKey(std::string_view key)
{
    const Color white = Color::whiteColor();
    if (key == keys::backgroundColor) {
        return Color::calibratedWhite(0.0f, 0.5f);
    }
    if (key == keys::selectionColor) {
        return Color::alternateSelectedControlColor();
    }
    if (key == keys::selectionBorderColor || key == keys::applicationNameColor ||
        key == keys::windowNameColor || key == keys::selectionWindowNameColor) {
        return white;
    }
    if (key == keys::dockIndicatorBorderColor) {
        return Color::calibratedWhite(0.9f, 0.8f);
    }
    if (key == keys::previewBorderColor) {
        return Color::selectedControlColor();
    }
    return std::nullopt;
}

} // namespace vexto
