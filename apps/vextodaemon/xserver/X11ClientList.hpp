#pragma once

#include "cycling/CycleWindow.hpp"

#include <cstdint>
#include <optional>
#include <vector>
#include <xcb/xcb.h>

namespace vexto {

class XcbConnection;

// The window manager's client windows, read from its EWMH properties, in the order the user
// last used them: the order is kept from the changes of the active window, which the root
// window reports, so nothing is asked for until a cycle needs it.
class X11ClientList {
public:
    // The most windows a cycle lists: a window manager naming more is not believed.
    static constexpr std::size_t mostWindows = 4096;
    // Titles and class names longer than this are cut, at a character's edge.
    static constexpr std::size_t longestText = 1024;

    explicit X11ClientList(XcbConnection& connection);

    // Reads the client list and the active window again, after a change the root reported.
    // Answers the windows that left the list since the last reading.
    std::vector<std::uint64_t> clientListChanged();
    void activeWindowChanged();

    std::optional<std::uint64_t> activeWindow() const { return active_; }
    // Every window a switcher offers, most recently used first.
    std::vector<CycleWindow> windowsInRecentOrder() const;
    std::optional<std::uint32_t> currentDesktop() const;

private:
    std::vector<xcb_window_t> stacking() const;
    std::optional<xcb_window_t> readActiveWindow() const;
    void noteUsed(xcb_window_t window);

    XcbConnection& connection_;
    // Most recently used first; windows never active keep the stacking order, top first.
    std::vector<xcb_window_t> recent_;
    std::optional<std::uint64_t> active_;
};

} // namespace vexto
