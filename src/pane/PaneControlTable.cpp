#include "pane/PaneControlTable.hpp"

#include "foundation/HotKeyRecordFormat.hpp"
#include "hotkeys/KRVXHotKeyTextView.hpp"
#include "settings/SettingDeclarations.hpp"
#include "settings/SettingKeys.hpp"
#include "system/SystemVersionChecks.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"
#include "toolkit/TabView.hpp"
#include "toolkit/TextField.hpp"
#include "widgets/KRVXLinkTextField.hpp"

namespace vexto {

namespace {

namespace keys = settingkeys;
using O = PaneOutlets;
using K = ControlKind;

// The outlet's name and the outlet itself, from one word, so that the two cannot disagree.
#define OUTLET(name) #name, &O::name

// The code defaults of the settings are declared with them (settings/SettingDeclarations.hpp):
// pop-ups' are tags or indices of the items the interface builds; check boxes without one take
// the defaults file's value, then off.
// clang-format off
const PaneControl table[] = {
    // Above the tabs.
    {OUTLET(mainView), "", K::View},
    {OUTLET(settingsTabView), "", K::View},
    {OUTLET(enableButton), "", K::PushButton},
    {OUTLET(warningTextField), "", K::Label},
    {OUTLET(helpButton), "", K::PushButton},

    // Hot keys.
    {OUTLET(allForwardTextView), "triggers", K::HotKeyField, keys::cycleAllWindows, hotkeyrecord::forward},
    {OUTLET(allBackwardTextView), "triggers", K::HotKeyField,
     keys::cycleAllWindows, hotkeyrecord::backward},
    {OUTLET(normalForwardTextView), "triggers", K::HotKeyField,
     keys::cycleNonMinimizedWindows, hotkeyrecord::forward},
    {OUTLET(normalBackwardTextView), "triggers", K::HotKeyField,
     keys::cycleNonMinimizedWindows, hotkeyrecord::backward},
    {OUTLET(minimizedForwardTextView), "triggers", K::HotKeyField,
     keys::cycleMinimizedWindows, hotkeyrecord::forward},
    {OUTLET(minimizedBackwardTextView), "triggers", K::HotKeyField,
     keys::cycleMinimizedWindows, hotkeyrecord::backward},
    {OUTLET(frontmostAllForwardTextView), "triggers", K::HotKeyField,
     keys::cycleAllWindowsOfFrontmostApplication, hotkeyrecord::forward},
    {OUTLET(frontmostAllBackwardTextView), "triggers", K::HotKeyField,
     keys::cycleAllWindowsOfFrontmostApplication, hotkeyrecord::backward},
    {OUTLET(frontmostNormalForwardTextView), "triggers", K::HotKeyField,
     keys::cycleNonMinimizedWindowsOfFrontmostApplication, hotkeyrecord::forward},
    {OUTLET(frontmostNormalBackwardTextView), "triggers", K::HotKeyField,
     keys::cycleNonMinimizedWindowsOfFrontmostApplication, hotkeyrecord::backward},
    {OUTLET(frontmostMinimizedForwardTextView), "triggers", K::HotKeyField,
     keys::cycleMinimizedWindowsOfFrontmostApplication, hotkeyrecord::forward},
    {OUTLET(frontmostMinimizedBackwardTextView), "triggers", K::HotKeyField,
     keys::cycleMinimizedWindowsOfFrontmostApplication, hotkeyrecord::backward},
    {OUTLET(zoomFrontmostTextView), "triggers", K::HotKeyField,
     keys::additionalZoomFrontmostWindow},
    {OUTLET(minimizeFrontmostTextView), "triggers", K::HotKeyField,
     keys::additionalMinimizeFrontmostWindow},
    {OUTLET(closeFrontmostTextView), "triggers", K::HotKeyField,
     keys::additionalCloseFrontmostWindow},
    {OUTLET(deminimizeAllMinimizedTextView), "triggers", K::HotKeyField,
     keys::additionalDeminimizeAllMinimizedWindows},
    {OUTLET(deminimizeFrontmostApplicationMinimizedTextView), "triggers", K::HotKeyField,
     keys::additionalDeminimizeMinimizedWindowsOfFrontmostApplication},
    {OUTLET(closeAllMinimizedTextView), "triggers", K::HotKeyField,
     keys::additionalCloseAllMinimizedWindows},
    {OUTLET(closeFrontmostApplicationMinimizedTextView), "triggers", K::HotKeyField,
     keys::additionalCloseMinimizedWindowsOfFrontmostApplication},

    // The panel.
    {OUTLET(panelDelayPopUpButton), "panel", K::PopUpByTag, keys::panelDelay},
    {OUTLET(panelScreenPopUpButton), "panel", K::PopUpByTag, keys::showPanelOnMouseScreen},
    {OUTLET(addActivateItemButton), "panel", K::CheckBox, keys::activateItem},
    {OUTLET(addActivateItemPopUpButton), "panel", K::PopUpByIndex, keys::activateItemMode},
    {OUTLET(addCancelItemButton), "panel", K::CheckBox, keys::cancelItem},
    {OUTLET(addCancelItemPopUpButton), "panel", K::PopUpByIndex, keys::cancelItemMode},
    {OUTLET(activateOnNoModifiersButton), "panel", K::CheckBox, keys::activateOnNoModifiers},
    {OUTLET(initiallySelectNextWindowButton), "panel", K::CheckBox, keys::stepForwardInitially},
    {OUTLET(wrapAroundScrollingButton), "panel", K::CheckBox, keys::wrapAroundScrolling},
    {OUTLET(applicationsSortOrderPopUpButton), "panel", K::PopUpByTag,
     keys::applicationsSortOrder},
    {OUTLET(invertApplicationsSortOrderButton), "panel", K::CheckBox,
     keys::invertApplicationsSortOrder},
    {OUTLET(showApplicationNamesButton), "panel", K::CheckBox, keys::showApplicationNames},
    {OUTLET(iconModePopUpButton), "panel", K::PopUpByTag, keys::iconMode},
    {OUTLET(showDocumentIconOverlaysButton), "panel", K::CheckBox, keys::showDocumentIconOverlays},
    {OUTLET(showShortcutBadgesButton), "panel", K::CheckBox, keys::showShortcutBadges},
    {OUTLET(showQuickLookButton), "panel", K::CheckBox, keys::showPreviews},
    {OUTLET(quickLookDelayPopUpButton), "panel", K::PopUpByTag, keys::previewDelay},
    {OUTLET(switchAcrossSpacesButton), "panel", K::CheckBox, keys::switchAcrossSpaces},
    {OUTLET(showSpaceBadgesButton), "panel", K::CheckBox, keys::alwaysShowSpaceBadges},

    // Appearance.
    {OUTLET(layoutPresetsPopUpButton), "appearance", K::PullDown},
    {OUTLET(fontsPopUpButton), "appearance", K::PullDown},
    {OUTLET(maximumTextSizeSlider), "appearance", K::Slider},
    {OUTLET(maximumTextSizeTextField), "appearance", K::Label},
    {OUTLET(maximumPaneWidthSlider), "appearance", K::Slider},
    {OUTLET(maximumPaneWidthTextField), "appearance", K::Label},
    {OUTLET(backgroundColorWell), "appearance", K::ColorWell, keys::backgroundColor},
    {OUTLET(selectionColorWell), "appearance", K::ColorWell, keys::selectionColor},
    {OUTLET(selectionBorderColorWell), "appearance", K::ColorWell, keys::selectionBorderColor},
    {OUTLET(applicationNameColorWell), "appearance", K::ColorWell, keys::applicationNameColor},
    {OUTLET(windowNameColorWell), "appearance", K::ColorWell, keys::windowNameColor},
    {OUTLET(selectionWindowNameColorWell), "appearance", K::ColorWell,
     keys::selectionWindowNameColor},
    {OUTLET(dockIndicatorBorderColorWell), "appearance", K::ColorWell,
     keys::dockIndicatorBorderColor},
    {OUTLET(keyBadgeColorWell), "appearance", K::ColorWell, keys::keyBadgeColor},
    {OUTLET(quickLookBorderColorWell), "appearance", K::ColorWell, keys::previewBorderColor},
    {OUTLET(spaceBadgeColorWell), "appearance", K::ColorWell,
     keys::spaceIndicatorColor, {}, keys::spaceBadgeColor},
    {OUTLET(spaceBadgeColorLabel), "appearance", K::Label},
    {OUTLET(panelShadowButton), "appearance", K::CheckBox, keys::panelShadow},
    {OUTLET(applicationNameShadowButton), "appearance", K::CheckBox, keys::applicationNameShadow},
    {OUTLET(windowNameShadowButton), "appearance", K::CheckBox, keys::windowNameShadow},

    // Windows.
    {OUTLET(afterZoomingPopUpButton), "windows", K::PopUpByIndex, keys::afterZoomSelection},
    {OUTLET(afterMinimizingPopUpButton), "windows", K::PopUpByIndex,
     keys::afterMinimizeSelection},
    {OUTLET(afterClosingPopUpButton), "windows", K::PopUpByIndex, keys::afterCloseSelection},
    {OUTLET(processWindowsWhenDoneButton), "windows", K::CheckBox, keys::processWindowsWhenDone},
    {OUTLET(applicationExceptionsTextField), "windows", K::ExceptionsField,
     keys::applicationExceptions},
    {OUTLET(windowExceptionsTextField), "windows", K::ExceptionsField, keys::windowExceptions},
    {OUTLET(timeoutSlider), "windows", K::Slider},
    {OUTLET(timeoutSliderValueTextField), "windows", K::Label},

    // Updates and about.
    {OUTLET(autoUpdateCheckingSwitch), "about", K::PushButton},
    {OUTLET(checkNowButton), "about", K::PushButton},
    {OUTLET(statusTextField), "about", K::Label},
    {OUTLET(statusDateTextField), "about", K::Label},
    {OUTLET(productPageButton), "about", K::PushButton},
    {OUTLET(aboutTextField), "about", K::Label},
    {OUTLET(feedbackTextField), "about", K::Label},
};
// clang-format on

#undef OUTLET

const char* actionOf(ControlKind kind)
{
    switch (kind) {
    case ControlKind::CheckBox:
        return "toggleBooleanSetting:";
    case ControlKind::PopUpByTag:
        return "changePopUpSettingWithTag:";
    case ControlKind::PopUpByIndex:
        return "changePopUpSetting:";
    case ControlKind::Slider:
        return "changeSliderSetting:";
    case ControlKind::ColorWell:
        return "changeColorSetting:";
    default:
        return nullptr;
    }
}

} // namespace

std::span<const PaneControl> PaneControlTable::rows()
{
    return table;
}

const PaneControl* PaneControlTable::byOutlet(std::string_view name)
{
    for (const PaneControl& row : table) {
        if (row.outlet == name) {
            return &row;
        }
    }
    return nullptr;
}

const PaneControl* PaneControlTable::byKey(std::string_view key)
{
    for (const PaneControl& row : table) {
        if (row.key == key) {
            return &row;
        }
    }
    return nullptr;
}

View* PaneControlTable::view(const PaneControl& row, const PaneOutlets& outlets)
{
    return std::visit([&](auto member) -> View* { return outlets.*member; }, row.member);
}

const PaneControl* PaneControlTable::forView(const View* view, const PaneOutlets& outlets)
{
    if (view == nullptr) {
        return nullptr;
    }
    for (const PaneControl& row : table) {
        if (PaneControlTable::view(row, outlets) == view) {
            return &row;
        }
    }
    return nullptr;
}

std::optional<std::int64_t> PaneControlTable::codeDefault(const PaneControl& row)
{
    const SettingDeclaration* declaration = settingdeclarations::forKey(row.key);
    if (declaration == nullptr || !declaration->codeDefault) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(*declaration->codeDefault);
}

std::string_view PaneControlTable::keyOf(const PaneControl& row)
{
    if (!row.olderSystemsKey.empty() && !KRVXDumbDownSpacesSupport()) {
        return row.olderSystemsKey;
    }
    return row.key;
}

void PaneControlTable::bindActions(const PaneOutlets& outlets, ActionTarget* target,
                                   TextFieldDelegate* textDelegate)
{
    for (const PaneControl& row : table) {
        View* view = PaneControlTable::view(row, outlets);
        if (row.kind == ControlKind::ExceptionsField) {
            if (auto* field = dynamic_cast<TextField*>(view)) {
                field->setDelegate(textDelegate);
            }
        } else if (const char* action = actionOf(row.kind)) {
            if (auto* control = dynamic_cast<Control*>(view)) {
                control->setTarget(target);
                control->setAction(action);
            }
        }
    }
}

} // namespace vexto
