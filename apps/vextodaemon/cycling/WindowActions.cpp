#include "cycling/WindowActions.hpp"

#include "cycling/WindowSystem.hpp"

#include <algorithm>

namespace vexto {

bool WindowActions::actsOnOneWindow(DaemonAction action)
{
    return action == DaemonAction::ZoomFrontmostWindow ||
           action == DaemonAction::MinimizeFrontmostWindow ||
           action == DaemonAction::CloseFrontmostWindow;
}

void WindowActions::actOn(WindowSystem& windows, DaemonAction action, const CycleWindow& window,
                          std::uint32_t time)
{
    switch (action) {
    case DaemonAction::ZoomFrontmostWindow:
        windows.toggleZoom(window, time);
        break;
    case DaemonAction::MinimizeFrontmostWindow:
        windows.minimize(window);
        break;
    case DaemonAction::CloseFrontmostWindow:
        windows.close(window, time);
        break;
    default:
        break;
    }
}

bool WindowActions::perform(DaemonAction action, std::uint32_t time)
{
    const std::vector<CycleWindow> windows = windows_.windowsInRecentOrder();
    const auto active = windows_.activeWindow();
    const auto front = std::find_if(windows.begin(), windows.end(),
                                    [&](const CycleWindow& w) { return w.id == active; });
    const bool hasFront = front != windows.end();
    // The minimised windows the action is about, least recently used first, so that restoring
    // them leaves the most recently used on top.
    const auto minimized = [&](bool ofFrontmostApplication) {
        std::vector<CycleWindow> found;
        for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
            if (window->minimized &&
                (!ofFrontmostApplication ||
                 (hasFront && window->applicationKey == front->applicationKey))) {
                found.push_back(*window);
            }
        }
        return found;
    };
    if (actsOnOneWindow(action)) {
        if (hasFront) {
            actOn(windows_, action, *front, time);
        }
        return hasFront;
    }
    std::vector<CycleWindow> chosen;
    switch (action) {
    case DaemonAction::DeminimizeAllMinimizedWindows:
    case DaemonAction::DeminimizeMinimizedWindowsOfFrontmostApplication:
        chosen =
            minimized(action == DaemonAction::DeminimizeMinimizedWindowsOfFrontmostApplication);
        for (const CycleWindow& window : chosen) {
            windows_.activate(window, time);
        }
        return !chosen.empty();
    case DaemonAction::CloseAllMinimizedWindows:
    case DaemonAction::CloseMinimizedWindowsOfFrontmostApplication:
        chosen = minimized(action == DaemonAction::CloseMinimizedWindowsOfFrontmostApplication);
        for (const CycleWindow& window : chosen) {
            windows_.close(window, time);
        }
        return !chosen.empty();
    default:
        return false;
    }
}

} // namespace vexto
