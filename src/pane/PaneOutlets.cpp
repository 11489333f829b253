#include "pane/PaneOutlets.hpp"

#include "hotkeys/KRVXHotKeyClearButton.hpp"
#include "hotkeys/KRVXHotKeyTextView.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"
#include "toolkit/TabView.hpp"
#include "toolkit/TextField.hpp"

#include <utility>

namespace vexto {

View* PaneOutlets::named(std::string_view name) const
{
    const std::pair<std::string_view, View*> table[] = {
        {"mainView", mainView},
        {"settingsTabView", settingsTabView},
        {"aboutTextField", aboutTextField},
        {"feedbackTextField", feedbackTextField},
        {"enableButton", enableButton},
        {"warningTextField", warningTextField},
        {"layoutPresetsPopUpButton", layoutPresetsPopUpButton},
        {"fontsPopUpButton", fontsPopUpButton},
        {"allForwardTextView", allForwardTextView},
        {"allBackwardTextView", allBackwardTextView},
        {"normalForwardTextView", normalForwardTextView},
        {"normalBackwardTextView", normalBackwardTextView},
        {"minimizedForwardTextView", minimizedForwardTextView},
        {"minimizedBackwardTextView", minimizedBackwardTextView},
        {"frontmostAllForwardTextView", frontmostAllForwardTextView},
        {"frontmostAllBackwardTextView", frontmostAllBackwardTextView},
        {"frontmostNormalForwardTextView", frontmostNormalForwardTextView},
        {"frontmostNormalBackwardTextView", frontmostNormalBackwardTextView},
        {"frontmostMinimizedForwardTextView", frontmostMinimizedForwardTextView},
        {"frontmostMinimizedBackwardTextView", frontmostMinimizedBackwardTextView},
        {"zoomFrontmostTextView", zoomFrontmostTextView},
        {"minimizeFrontmostTextView", minimizeFrontmostTextView},
        {"closeFrontmostTextView", closeFrontmostTextView},
        {"deminimizeAllMinimizedTextView", deminimizeAllMinimizedTextView},
        {"deminimizeFrontmostApplicationMinimizedTextView",
         deminimizeFrontmostApplicationMinimizedTextView},
        {"closeAllMinimizedTextView", closeAllMinimizedTextView},
        {"closeFrontmostApplicationMinimizedTextView", closeFrontmostApplicationMinimizedTextView},
        {"panelDelayPopUpButton", panelDelayPopUpButton},
        {"panelScreenPopUpButton", panelScreenPopUpButton},
        {"addActivateItemButton", addActivateItemButton},
        {"addActivateItemPopUpButton", addActivateItemPopUpButton},
        {"addCancelItemButton", addCancelItemButton},
        {"addCancelItemPopUpButton", addCancelItemPopUpButton},
        {"activateOnNoModifiersButton", activateOnNoModifiersButton},
        {"initiallySelectNextWindowButton", initiallySelectNextWindowButton},
        {"wrapAroundScrollingButton", wrapAroundScrollingButton},
        {"applicationsSortOrderPopUpButton", applicationsSortOrderPopUpButton},
        {"invertApplicationsSortOrderButton", invertApplicationsSortOrderButton},
        {"showApplicationNamesButton", showApplicationNamesButton},
        {"iconModePopUpButton", iconModePopUpButton},
        {"showDocumentIconOverlaysButton", showDocumentIconOverlaysButton},
        {"showShortcutBadgesButton", showShortcutBadgesButton},
        {"showQuickLookButton", showQuickLookButton},
        {"quickLookDelayPopUpButton", quickLookDelayPopUpButton},
        {"switchAcrossSpacesButton", switchAcrossSpacesButton},
        {"showSpaceBadgesButton", showSpaceBadgesButton},
        {"maximumTextSizeSlider", maximumTextSizeSlider},
        {"maximumTextSizeTextField", maximumTextSizeTextField},
        {"maximumPaneWidthSlider", maximumPaneWidthSlider},
        {"maximumPaneWidthTextField", maximumPaneWidthTextField},
        {"backgroundColorWell", backgroundColorWell},
        {"selectionColorWell", selectionColorWell},
        {"selectionBorderColorWell", selectionBorderColorWell},
        {"applicationNameColorWell", applicationNameColorWell},
        {"windowNameColorWell", windowNameColorWell},
        {"selectionWindowNameColorWell", selectionWindowNameColorWell},
        {"dockIndicatorBorderColorWell", dockIndicatorBorderColorWell},
        {"keyBadgeColorWell", keyBadgeColorWell},
        {"spaceBadgeColorWell", spaceBadgeColorWell},
        {"spaceBadgeColorLabel", spaceBadgeColorLabel},
        {"quickLookBorderColorWell", quickLookBorderColorWell},
        {"panelShadowButton", panelShadowButton},
        {"applicationNameShadowButton", applicationNameShadowButton},
        {"windowNameShadowButton", windowNameShadowButton},
        {"afterZoomingPopUpButton", afterZoomingPopUpButton},
        {"afterMinimizingPopUpButton", afterMinimizingPopUpButton},
        {"afterClosingPopUpButton", afterClosingPopUpButton},
        {"processWindowsWhenDoneButton", processWindowsWhenDoneButton},
        {"applicationExceptionsTextField", applicationExceptionsTextField},
        {"windowExceptionsTextField", windowExceptionsTextField},
        {"timeoutSlider", timeoutSlider},
        {"timeoutSliderValueTextField", timeoutSliderValueTextField},
        {"autoUpdateCheckingSwitch", autoUpdateCheckingSwitch},
        {"checkNowButton", checkNowButton},
        {"statusTextField", statusTextField},
        {"statusDateTextField", statusDateTextField},
    };
    for (const auto& [outlet, view] : table) {
        if (outlet == name) {
            return view;
        }
    }
    return nullptr;
}

} // namespace vexto
