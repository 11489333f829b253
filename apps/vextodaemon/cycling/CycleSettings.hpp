#pragma once

#include "cycling/WindowCycle.hpp"

namespace vexto {

class LayeredSettings;

// How a cycle behaves, read from the settings over the shipped defaults.
struct CycleSettings {
    WindowCycle::Options options;
    // How long a cycle must be held before its panel shows.
    double panelDelaySeconds = 0.2;
    // With modifiers: activation waits until every modifier key is up, not only the hot key's.
    // Without modifiers: releasing the hot key activates at once instead of leaving the panel up
    // until Return, a click or Escape.
    bool activateOnNoModifiers = false;
    // Off: a cycle offers only the current desktop's windows.
    bool switchAcrossSpaces = true;
    // Typing an application's badge, "1" to "9" then "a" to "z", activates it.
    bool shortcutBadges = true;
    // What the panel selects after zooming, minimising or closing its selected window.
    WindowCycle::FollowUp afterZoom = WindowCycle::FollowUp::NextWindow;
    WindowCycle::FollowUp afterMinimize = WindowCycle::FollowUp::NextWindow;
    WindowCycle::FollowUp afterClose = WindowCycle::FollowUp::PreviousWindow;
    // Zooming, minimising and closing from the panel wait until the cycle ends with a switch;
    // Escape and the cancellation item drop them.
    bool processWindowsWhenDone = false;
    // A picture of the selected window, once the selection has rested on it this long.
    bool showPreviews = true;
    double previewDelaySeconds = 2.0;

    static CycleSettings fromSettings(const LayeredSettings& settings);
};

} // namespace vexto
