#pragma once

#include <string_view>

namespace vexto {

class Button;
class ColorWell;
class KRVXHotKeyClearButton;
class KRVXHotKeyTextView;
class KRVXLinkTextField;
class PopUpButton;
class Slider;
class TabView;
class TextField;
class View;

// The pane's controls by role. The views belong to the main view's tree; these are references
// into it, valid while the main view lives.
struct PaneOutlets {
    View* mainView = nullptr;
    TabView* settingsTabView = nullptr;
    TextField* aboutTextField = nullptr;
    KRVXLinkTextField* feedbackTextField = nullptr;
    Button* enableButton = nullptr;
    KRVXLinkTextField* warningTextField = nullptr;
    Button* helpButton = nullptr;
    PopUpButton* layoutPresetsPopUpButton = nullptr;
    PopUpButton* fontsPopUpButton = nullptr;

    // Hot-key fields, each with its clear button.
    KRVXHotKeyTextView* allForwardTextView = nullptr;
    KRVXHotKeyTextView* allBackwardTextView = nullptr;
    KRVXHotKeyTextView* normalForwardTextView = nullptr;
    KRVXHotKeyTextView* normalBackwardTextView = nullptr;
    KRVXHotKeyTextView* minimizedForwardTextView = nullptr;
    KRVXHotKeyTextView* minimizedBackwardTextView = nullptr;
    KRVXHotKeyTextView* frontmostAllForwardTextView = nullptr;
    KRVXHotKeyTextView* frontmostAllBackwardTextView = nullptr;
    KRVXHotKeyTextView* frontmostNormalForwardTextView = nullptr;
    KRVXHotKeyTextView* frontmostNormalBackwardTextView = nullptr;
    KRVXHotKeyTextView* frontmostMinimizedForwardTextView = nullptr;
    KRVXHotKeyTextView* frontmostMinimizedBackwardTextView = nullptr;
    KRVXHotKeyTextView* zoomFrontmostTextView = nullptr;
    KRVXHotKeyTextView* minimizeFrontmostTextView = nullptr;
    KRVXHotKeyTextView* closeFrontmostTextView = nullptr;
    KRVXHotKeyTextView* deminimizeAllMinimizedTextView = nullptr;
    KRVXHotKeyTextView* deminimizeFrontmostApplicationMinimizedTextView = nullptr;
    KRVXHotKeyTextView* closeAllMinimizedTextView = nullptr;
    KRVXHotKeyTextView* closeFrontmostApplicationMinimizedTextView = nullptr;

    // Panel behaviour.
    PopUpButton* panelDelayPopUpButton = nullptr;
    PopUpButton* panelScreenPopUpButton = nullptr;
    Button* addActivateItemButton = nullptr;
    PopUpButton* addActivateItemPopUpButton = nullptr;
    Button* addCancelItemButton = nullptr;
    PopUpButton* addCancelItemPopUpButton = nullptr;
    Button* activateOnNoModifiersButton = nullptr;
    Button* initiallySelectNextWindowButton = nullptr;
    Button* wrapAroundScrollingButton = nullptr;
    PopUpButton* applicationsSortOrderPopUpButton = nullptr;
    Button* invertApplicationsSortOrderButton = nullptr;
    Button* showApplicationNamesButton = nullptr;
    PopUpButton* iconModePopUpButton = nullptr;
    Button* showDocumentIconOverlaysButton = nullptr; // inside a box of its own
    Button* showShortcutBadgesButton = nullptr;
    Button* showQuickLookButton = nullptr;
    PopUpButton* quickLookDelayPopUpButton = nullptr;
    Button* switchAcrossSpacesButton = nullptr;
    Button* showSpaceBadgesButton = nullptr;

    // Appearance.
    Slider* maximumTextSizeSlider = nullptr;
    TextField* maximumTextSizeTextField = nullptr;
    Slider* maximumPaneWidthSlider = nullptr;
    TextField* maximumPaneWidthTextField = nullptr;
    ColorWell* backgroundColorWell = nullptr;
    ColorWell* selectionColorWell = nullptr;
    ColorWell* selectionBorderColorWell = nullptr;
    ColorWell* applicationNameColorWell = nullptr;
    ColorWell* windowNameColorWell = nullptr;
    ColorWell* selectionWindowNameColorWell = nullptr;
    ColorWell* dockIndicatorBorderColorWell = nullptr;
    ColorWell* keyBadgeColorWell = nullptr;
    ColorWell* spaceBadgeColorWell = nullptr;
    TextField* spaceBadgeColorLabel = nullptr; // hidden with its well on older systems
    ColorWell* quickLookBorderColorWell = nullptr;
    Button* panelShadowButton = nullptr;
    Button* applicationNameShadowButton = nullptr;
    Button* windowNameShadowButton = nullptr;

    // Windows.
    PopUpButton* afterZoomingPopUpButton = nullptr;
    PopUpButton* afterMinimizingPopUpButton = nullptr;
    PopUpButton* afterClosingPopUpButton = nullptr;
    Button* processWindowsWhenDoneButton = nullptr;
    TextField* applicationExceptionsTextField = nullptr;
    TextField* windowExceptionsTextField = nullptr;
    Slider* timeoutSlider = nullptr;
    TextField* timeoutSliderValueTextField = nullptr;

    // Updates.
    Button* autoUpdateCheckingSwitch = nullptr;
    Button* checkNowButton = nullptr;
    TextField* statusTextField = nullptr;
    TextField* statusDateTextField = nullptr;
    Button* productPageButton = nullptr; // its tool tip is the address it opens
};

} // namespace vexto
