#pragma once

#include "cycling/CycleWindow.hpp"
#include "cycling/HotKeyBinding.hpp"

#include <cstdint>

namespace vexto {

class WindowSystem;

// The hot keys that act at once instead of starting a cycle: on the frontmost window, or on the
// minimised windows of every program or of the frontmost one.
class WindowActions {
public:
    explicit WindowActions(WindowSystem& windows) : windows_(windows) {}

    // False for an action that is a cycle, or when there is no window to act on.
    bool perform(DaemonAction action, std::uint32_t time);

    // Zoom, minimise and close: the actions on one window, the frontmost or a cycle's selection.
    static bool actsOnOneWindow(DaemonAction action);
    // One of those on the window; nothing for another action.
    static void actOn(WindowSystem& windows, DaemonAction action, const CycleWindow& window,
                      std::uint32_t time);

private:
    WindowSystem& windows_;
};

} // namespace vexto
