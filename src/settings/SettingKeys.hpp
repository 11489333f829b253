#pragma once

#include <string_view>

// Every key of the settings file, as the daemon reads it. Each text stands here once.
namespace vexto::settingkeys {

// Bound to a control.
inline constexpr std::string_view switchAcrossSpaces = "Switch Across Spaces";
inline constexpr std::string_view panelDelay = "Panel Delay";
inline constexpr std::string_view showPanelOnMouseScreen = "Show Panel On Mouse Screen";
inline constexpr std::string_view activateItem = "Activate Item";
inline constexpr std::string_view activateItemMode = "Activate Item Mode";
inline constexpr std::string_view cancelItem = "Cancel Item";
inline constexpr std::string_view cancelItemMode = "Cancel Item Mode";
inline constexpr std::string_view activateOnNoModifiers = "Activate On No Modifiers";
inline constexpr std::string_view stepForwardInitially = "Step Forward Initially";
inline constexpr std::string_view wrapAroundScrolling = "Wrap-Around Scrolling";
inline constexpr std::string_view applicationsSortOrder = "Applications Sort Order";
inline constexpr std::string_view invertApplicationsSortOrder = "Invert Applications Sort Order";
inline constexpr std::string_view showApplicationNames = "Show Application Names";
inline constexpr std::string_view iconMode = "Icon Mode";
inline constexpr std::string_view showDocumentIconOverlays = "Show Document Icon Overlays";
inline constexpr std::string_view panelShadow = "Panel Shadow";
inline constexpr std::string_view applicationNameShadow = "Application Name Shadow";
inline constexpr std::string_view windowNameShadow = "Window Name Shadow";
inline constexpr std::string_view applicationExceptions = "Application Exceptions";
inline constexpr std::string_view windowExceptions = "Window Exceptions";
inline constexpr std::string_view afterZoomSelection = "After-Zoom Selection";
inline constexpr std::string_view afterMinimizeSelection = "After-Minimize Selection";
inline constexpr std::string_view afterCloseSelection = "After-Close Selection";
inline constexpr std::string_view processWindowsWhenDone = "Process Windows When Done";
inline constexpr std::string_view backgroundColor = "Background Color";
inline constexpr std::string_view selectionColor = "Selection Color";
inline constexpr std::string_view selectionBorderColor = "Selection Border Color";
inline constexpr std::string_view applicationNameColor = "Application Name Color";
inline constexpr std::string_view windowNameColor = "Window Name Color";
inline constexpr std::string_view selectionWindowNameColor = "Selection Window Name Color";
inline constexpr std::string_view dockIndicatorBorderColor = "Dock Indicator Border Color";
inline constexpr std::string_view showShortcutBadges = "Show Shortcut Badges";
inline constexpr std::string_view keyBadgeColor = "Key Badge Color";
inline constexpr std::string_view alwaysShowSpaceBadges = "Always Show Space Badges";
inline constexpr std::string_view spaceIndicatorColor = "Space Indicator Color";
inline constexpr std::string_view spaceBadgeColor = "Space Badge Color";
inline constexpr std::string_view showPreviews = "Show Previews";
inline constexpr std::string_view previewDelay = "Preview Delay";
inline constexpr std::string_view previewBorderColor = "Preview Border Color";

// Written by sliders, menus and the pane itself.
inline constexpr std::string_view accessibilityApiTimeout = "Accessibility API Timeout";
inline constexpr std::string_view itemHeight = "Item Height";
inline constexpr std::string_view maximumWidth = "Maximum Width";
inline constexpr std::string_view selectionGradient = "Selection Gradient";
inline constexpr std::string_view alternatePanelFont = "Alternate Panel Font";
inline constexpr std::string_view fontSmoothing = "Font Smoothing";
inline constexpr std::string_view hideCurrentSpaceBadges = "Hide Current Space Badges";
inline constexpr std::string_view requireExactModifierKeyMatches =
    "Require Exact Modifier Key Matches";
inline constexpr std::string_view ignoreCapsLock = "Ignore Caps Lock";
inline constexpr std::string_view ignoreFunctionKey = "Ignore Function Key";
inline constexpr std::string_view lastTab = "Last Tab";
inline constexpr std::string_view autoEnabledOnce = "Auto-Enabled Once";

// Hot-key tables, with a record per direction.
inline constexpr std::string_view cycleAllWindows = "Cycle All Windows";
inline constexpr std::string_view cycleNonMinimizedWindows = "Cycle Non-Minimized Windows";
inline constexpr std::string_view cycleMinimizedWindows = "Cycle Minimized Windows";
inline constexpr std::string_view cycleAllWindowsOfFrontmostApplication =
    "Cycle All Windows of Frontmost Application";
inline constexpr std::string_view cycleNonMinimizedWindowsOfFrontmostApplication =
    "Cycle Non-Minimized Windows of Frontmost Application";
inline constexpr std::string_view cycleMinimizedWindowsOfFrontmostApplication =
    "Cycle Minimized Windows of Frontmost Application";
inline constexpr std::string_view additionalZoomFrontmostWindow =
    "Additional Zoom Frontmost Window";
inline constexpr std::string_view additionalMinimizeFrontmostWindow =
    "Additional Minimize Frontmost Window";
inline constexpr std::string_view additionalCloseFrontmostWindow =
    "Additional Close Frontmost Window";
inline constexpr std::string_view additionalDeminimizeAllMinimizedWindows =
    "Additional Deminimize All Minimized Windows";
inline constexpr std::string_view additionalDeminimizeMinimizedWindowsOfFrontmostApplication =
    "Additional Deminimize Minimized Windows of Frontmost Application";
inline constexpr std::string_view additionalCloseAllMinimizedWindows =
    "Additional Close All Minimized Windows";
inline constexpr std::string_view additionalCloseMinimizedWindowsOfFrontmostApplication =
    "Additional Close Minimized Windows of Frontmost Application";

// Read only to migrate them.
inline constexpr std::string_view showDocumentIcons = "Show Document Icons";
inline constexpr std::string_view alwaysShowPanel = "Always Show Panel";

} // namespace vexto::settingkeys
