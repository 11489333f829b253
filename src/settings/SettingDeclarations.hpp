#pragma once

#include "settings/SettingKeys.hpp"

#include <optional>
#include <span>
#include <string_view>

namespace vexto {

// What a setting holds in the settings file.
enum class SettingType { Boolean, Integer, Real, String, Colour, List, HotKeyTable };

// One setting, declared once: its key, its type, the value the code uses while the settings hold
// none (a boolean as 1 or 0, a tag or an index for the pop-ups), and the range a number is kept
// within. The pane, its hot-key fields and the daemon all read these; the shipped defaults file
// must agree with them.
struct SettingDeclaration {
    std::string_view key;
    SettingType type;
    std::optional<double> codeDefault = {};
    std::optional<double> minimum = {};
    std::optional<double> maximum = {};
};

namespace settingdeclarations {

namespace keys = settingkeys;
using T = SettingType;

// clang-format off
inline constexpr SettingDeclaration declarations[] = {
    // The panel.
    {keys::switchAcrossSpaces, T::Boolean, 1},
    {keys::panelDelay, T::Integer, 200},
    {keys::showPanelOnMouseScreen, T::Integer, 0},
    {keys::activateItem, T::Boolean},
    {keys::activateItemMode, T::Integer, 0},
    {keys::cancelItem, T::Boolean},
    {keys::cancelItemMode, T::Integer, 1},
    {keys::activateOnNoModifiers, T::Boolean},
    {keys::stepForwardInitially, T::Boolean},
    {keys::wrapAroundScrolling, T::Boolean},
    {keys::applicationsSortOrder, T::Integer, 3},
    {keys::invertApplicationsSortOrder, T::Boolean},
    {keys::showApplicationNames, T::Boolean},
    {keys::iconMode, T::Integer, 1},
    {keys::showDocumentIconOverlays, T::Boolean},
    {keys::showShortcutBadges, T::Boolean},
    {keys::showPreviews, T::Boolean, 1},
    {keys::previewDelay, T::Integer, 2000},
    {keys::alwaysShowSpaceBadges, T::Boolean},
    {keys::hideCurrentSpaceBadges, T::Boolean},

    // The look.
    {keys::panelShadow, T::Boolean},
    {keys::applicationNameShadow, T::Boolean},
    {keys::windowNameShadow, T::Boolean},
    {keys::backgroundColor, T::Colour},
    {keys::selectionColor, T::Colour},
    {keys::selectionBorderColor, T::Colour},
    {keys::applicationNameColor, T::Colour},
    {keys::windowNameColor, T::Colour},
    {keys::selectionWindowNameColor, T::Colour},
    {keys::dockIndicatorBorderColor, T::Colour},
    {keys::keyBadgeColor, T::Colour},
    {keys::spaceIndicatorColor, T::Colour},
    {keys::spaceBadgeColor, T::Colour},
    {keys::previewBorderColor, T::Colour},
    {keys::itemHeight, T::Real, 48, 12, 128},
    {keys::maximumWidth, T::Real, -1},
    {keys::selectionGradient, T::Integer, -15},
    {keys::alternatePanelFont, T::String},
    {keys::fontSmoothing, T::Integer, 0},

    // Windows.
    {keys::afterZoomSelection, T::Integer, 2},
    {keys::afterMinimizeSelection, T::Integer, 2},
    {keys::afterCloseSelection, T::Integer, 3},
    {keys::processWindowsWhenDone, T::Boolean},
    {keys::applicationExceptions, T::List},
    {keys::windowExceptions, T::List},
    {keys::accessibilityApiTimeout, T::Real, 0.2, 0},

    // Hot keys and how they are compared.
    {keys::requireExactModifierKeyMatches, T::Boolean, 0},
    {keys::ignoreCapsLock, T::Boolean, 1},
    {keys::ignoreFunctionKey, T::Boolean, 1},
    {keys::cycleAllWindows, T::HotKeyTable},
    {keys::cycleNonMinimizedWindows, T::HotKeyTable},
    {keys::cycleMinimizedWindows, T::HotKeyTable},
    {keys::cycleAllWindowsOfFrontmostApplication, T::HotKeyTable},
    {keys::cycleNonMinimizedWindowsOfFrontmostApplication, T::HotKeyTable},
    {keys::cycleMinimizedWindowsOfFrontmostApplication, T::HotKeyTable},
    {keys::additionalZoomFrontmostWindow, T::HotKeyTable},
    {keys::additionalMinimizeFrontmostWindow, T::HotKeyTable},
    {keys::additionalCloseFrontmostWindow, T::HotKeyTable},
    {keys::additionalDeminimizeAllMinimizedWindows, T::HotKeyTable},
    {keys::additionalDeminimizeMinimizedWindowsOfFrontmostApplication, T::HotKeyTable},
    {keys::additionalCloseAllMinimizedWindows, T::HotKeyTable},
    {keys::additionalCloseMinimizedWindowsOfFrontmostApplication, T::HotKeyTable},

    // The pane's own.
    {keys::lastTab, T::String},
    {keys::autoEnabledOnce, T::Boolean, 0},
};
// clang-format on

// The declaration of a key; none for one read only to migrate it.
const SettingDeclaration* forKey(std::string_view key);
inline std::span<const SettingDeclaration> all()
{
    return declarations;
}

// Code defaults and bounds, found while compiling: a key that is not declared, or has no such
// value, does not compile.
consteval const SettingDeclaration& declared(std::string_view key)
{
    for (const SettingDeclaration& declaration : declarations) {
        if (declaration.key == key) {
            return declaration;
        }
    }
    throw "a setting used but not declared";
}
consteval double known(const std::optional<double>& value)
{
    if (!value) {
        throw "a value the declaration does not give";
    }
    return *value;
}
// A boolean that declares no value of its own is false where neither file holds it.
consteval bool booleanDefault(std::string_view key)
{
    const SettingDeclaration& declaration = declared(key);
    if (declaration.type != SettingType::Boolean) {
        throw "not a boolean";
    }
    return declaration.codeDefault.value_or(0) != 0;
}
consteval long long integerDefault(std::string_view key)
{
    return static_cast<long long>(known(declared(key).codeDefault));
}
consteval double realDefault(std::string_view key)
{
    return known(declared(key).codeDefault);
}
consteval double minimum(std::string_view key)
{
    return known(declared(key).minimum);
}
consteval double maximum(std::string_view key)
{
    return known(declared(key).maximum);
}

} // namespace settingdeclarations

} // namespace vexto
