#pragma once

#include "cycling/CycleWindow.hpp"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>
#include <xcb/xcb.h>

namespace vexto {

class XcbConnection;

// The window manager's client windows, read from its EWMH properties, in the order the user
// last used them: the order is kept from the changes of the active window, which the root
// window reports, so nothing is asked for until a cycle needs it. The clients' own property
// changes are watched for their icons.
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

    // Icons are taken in the size nearest this many pixels a side.
    void setPreferredIconSize(int pixels);
    // The window published a new icon.
    void iconChanged(xcb_window_t window) { icons_.erase(window); }
    // The most of a window's icon property that is read.
    static constexpr std::uint32_t mostIconUnits = 1024 * 1024 / 4;

private:
    std::vector<xcb_window_t> stacking() const;
    std::optional<std::vector<xcb_window_t>> rootWindows(xcb_atom_t list) const;
    std::optional<xcb_window_t> readActiveWindow() const;
    void noteUsed(xcb_window_t window);
    // Kept per window, and read again only after the window says its icon changed.
    std::shared_ptr<const Bitmap> iconFrom(xcb_window_t window,
                                           xcb_get_property_cookie_t asked) const;

    XcbConnection& connection_;
    // Most recently used first; windows never active keep the stacking order, top first.
    std::vector<xcb_window_t> recent_;
    std::optional<std::uint64_t> active_;
    int preferredIconSize_ = 64;
    mutable std::map<xcb_window_t, std::shared_ptr<const Bitmap>> icons_;
};

} // namespace vexto
