#include "panel/PanelAppearance.hpp"

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

// A face named by its display name ("DejaVu Serif Bold"), as layouts store it: a member of a
// family whose name starts the display name.
std::optional<Font> fontWithDisplayName(const FontCatalog& fonts, const std::string& displayName,
                                        double size)
{
    for (const std::string& family : fonts.availableFontFamilies()) {
        if (!displayName.starts_with(family)) {
            continue;
        }
        for (const std::string& member : fonts.availableMembersOfFontFamily(family)) {
            auto font = fonts.fontWithName(member, size);
            if (font && font->displayName() == displayName) {
                return font;
            }
        }
    }
    return std::nullopt;
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
        if (auto font = fontWithDisplayName(*fonts, *name, size)) {
            return font;
        }
    }
    // Not installed here: the desktop finds the nearest face by that name.
    return Font(*name, *name, *name, size);
}

} // namespace

PanelAppearance PanelAppearance::fromSettings(const PlistDictionary& userSettings,
                                              const PlistDictionary& defaults,
                                              const FontCatalog* fonts)
{
    const LayeredSettings settings(userSettings, defaults);
    PanelAppearance look;
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
    // A grey of its own by default: a badge in the selection's colour would vanish on the
    // selected row.
    look.spaceBadge =
        settings.color(keys::spaceIndicatorColor,
                       settings.color(keys::spaceBadgeColor, Color::calibratedWhite(0.45f, 0.95f)));

    look.previewBorder = settings.color(keys::previewBorderColor, Color::selectedControlColor());

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
    look.alwaysShowSpaceBadges =
        settings.flag(keys::alwaysShowSpaceBadges,
                      settingdeclarations::booleanDefault(keys::alwaysShowSpaceBadges));
    look.hideCurrentSpaceBadges =
        settings.flag(keys::hideCurrentSpaceBadges,
                      settingdeclarations::booleanDefault(keys::hideCurrentSpaceBadges));
    look.showApplicationNames =
        settings.flag(keys::showApplicationNames,
                      settingdeclarations::booleanDefault(keys::showApplicationNames));
    look.iconMode =
        std::clamp<std::int64_t>(settings.integer(keys::iconMode)
                                     .value_or(settingdeclarations::integerDefault(keys::iconMode)),
                                 0, 2);
    look.documentIconOverlays =
        settings.flag(keys::showDocumentIconOverlays,
                      settingdeclarations::booleanDefault(keys::showDocumentIconOverlays));
    look.showPreviews =
        settings.flag(keys::showPreviews, settingdeclarations::booleanDefault(keys::showPreviews));
    look.onMouseScreen = settings.flag(keys::showPanelOnMouseScreen, false);
    look.font = panelFont(settings, fonts, 13);
    return look;
}

} // namespace vexto
