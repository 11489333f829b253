#pragma once

#include <cstdint>
#include <string>

namespace vexto {

// What a hot key of the daemon does.
enum class DaemonAction {
    CycleAllWindows,
    CycleNonMinimizedWindows,
    CycleMinimizedWindows,
    CycleAllWindowsOfFrontmostApplication,
    CycleNonMinimizedWindowsOfFrontmostApplication,
    CycleMinimizedWindowsOfFrontmostApplication,
    ZoomFrontmostWindow,
    MinimizeFrontmostWindow,
    CloseFrontmostWindow,
    DeminimizeAllMinimizedWindows,
    DeminimizeMinimizedWindowsOfFrontmostApplication,
    CloseAllMinimizedWindows,
    CloseMinimizedWindowsOfFrontmostApplication,
};

inline bool startsCycle(DaemonAction action)
{
    return action <= DaemonAction::CycleMinimizedWindowsOfFrontmostApplication;
}

enum class StepDirection { Forward, Backward };

// One hot key read from the settings: the platform's virtual key code and the whole modifier
// word as the pane recorded them, and the text the pane showed for it (for the log).
struct HotKeyBinding {
    DaemonAction action = DaemonAction::CycleAllWindows;
    StepDirection direction = StepDirection::Forward;
    std::uint16_t keyCode = 0;
    std::uint64_t modifiers = 0;
    std::string text;

    bool operator==(const HotKeyBinding&) const = default;
};

} // namespace vexto
