#include "panel/SampleAppearance.hpp"

#include "foundation/DictionaryExtensions.hpp"
#include "ports/FontCatalog.hpp"
#include "settings/AppearanceDefaults.hpp"
#include "settings/LayeredSettings.hpp"
#include "settings/SettingDeclarations.hpp"
#include "settings/SettingKeys.hpp"

#include <algorithm>

namespace vexto {

namespace {

namespace keys = settingkeys;

Color fixedDefault(std::string_view key)
{
    return AppearanceDefaults::colorForKey(key).value_or(Color::whiteColor());
}

std::optional<Font> panelFont(const LayeredSettings& settings, const FontCatalog* fonts,
                              double size)
{
    const std::string* name = settings.string(keys::alternatePanelFont);
    if (name == nullptr || name->empty()) {
        return std::nullopt;
    }
    if (fonts != nullptr) {
        if (auto font = fonts->fontWithName(*name, size)) {
            return font;
        }
    }
    // A display name ("DejaVu Sans Bold"), as layouts store it: the desktop finds the face.
    return Font(*name, *name, *name, size);
}

} // namespace

SampleAppearance SampleAppearance::fromSettings(const PlistDictionary& userSettings,
                                                const PlistDictionary& defaults,
                                                const FontCatalog* fonts)
{
    const LayeredSettings settings(userSettings, defaults);
    SampleAppearance look;
    look.background = settings.color(keys::backgroundColor, fixedDefault(keys::backgroundColor));
    look.selection = settings.color(keys::selectionColor, fixedDefault(keys::selectionColor));
    look.selectionBorder =
        settings.color(keys::selectionBorderColor, fixedDefault(keys::selectionBorderColor));
    look.applicationName =
        settings.color(keys::applicationNameColor, fixedDefault(keys::applicationNameColor));
    look.windowName = settings.color(keys::windowNameColor, fixedDefault(keys::windowNameColor));
    look.selectionWindowName = settings.color(keys::selectionWindowNameColor,
                                              fixedDefault(keys::selectionWindowNameColor));
    // Without a colour of its own the key badge follows the selection.
    look.keyBadge = settings.color(keys::keyBadgeColor, look.selection);

    look.selectionGradient =
        settings.integer(keys::selectionGradient)
            .value_or(settingdeclarations::integerDefault(keys::selectionGradient));

    look.itemSize = std::clamp(settings.number(keys::itemHeight)
                                   .value_or(settingdeclarations::realDefault(keys::itemHeight)),
                               smallestItem, largestItem);
    if (const auto width = settings.number(keys::maximumWidth); width && *width >= 0.01) {
        look.maximumWidth = std::min(*width, 1.0);
    }
    look.smoothFonts = settings.integer(keys::fontSmoothing)
                           .value_or(settingdeclarations::integerDefault(keys::fontSmoothing)) >= 0;

    look.panelShadow = settings.flag(keys::panelShadow, true);
    look.applicationNameShadow = settings.flag(keys::applicationNameShadow, true);
    look.windowNameShadow = settings.flag(keys::windowNameShadow, false);
    look.shortcutBadges = settings.flag(keys::showShortcutBadges, true);
    look.onMouseScreen = settings.flag(keys::showPanelOnMouseScreen, false);
    look.font = panelFont(settings, fonts, 13);
    return look;
}

} // namespace vexto
