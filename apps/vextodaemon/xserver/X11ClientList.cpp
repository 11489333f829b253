#include "xserver/X11ClientList.hpp"

#include "foundation/TextEncoding.hpp"
#include "xserver/NetWmIcon.hpp"
#include "xserver/XcbConnection.hpp"
#include "xserver/XcbReply.hpp"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <xcb/xcb_icccm.h>

namespace vexto {

namespace {

// At most this many 32-bit units of a text property are fetched.
constexpr std::uint32_t textUnits = X11ClientList::longestText / 4;

// Cut to the bound at a character's edge, with what is not UTF-8 replaced.
std::string boundedUtf8(std::string_view text)
{
    std::string out;
    std::size_t at = 0;
    while (at < text.size()) {
        std::string next;
        TextEncoding::appendUtf8(next, TextEncoding::nextCodePoint(text, at));
        if (out.size() + next.size() > X11ClientList::longestText) {
            break;
        }
        out += next;
    }
    return out;
}

std::string fromLatin1(std::string_view text)
{
    std::string out;
    for (const char byte : text.substr(0, X11ClientList::longestText / 2)) {
        TextEncoding::appendUtf8(out, static_cast<unsigned char>(byte));
    }
    return out;
}

// What one window's properties say, asked for all windows at once before any answer is read.
struct Asked {
    xcb_window_t window;
    xcb_get_property_cookie_t netName;
    xcb_get_property_cookie_t name;
    xcb_get_property_cookie_t windowClass;
    xcb_get_property_cookie_t pid;
    xcb_get_property_cookie_t state;
    xcb_get_property_cookie_t desktop;
    xcb_get_property_cookie_t type;
    // Asked only for windows whose icon is not known yet.
    std::optional<xcb_get_property_cookie_t> icon;
};

xcb_get_property_cookie_t ask(xcb_connection_t* c, xcb_window_t window, xcb_atom_t property,
                              xcb_atom_t type, std::uint32_t units)
{
    return xcb_get_property(c, 0, window, property, type, 0, units);
}

// The window manager's names of its desktops, in order; at most 64, each cut at 64 bytes.
constexpr std::size_t mostDesktops = 64;
constexpr std::size_t longestDesktopName = 64;

std::string_view textOf(const xcb_get_property_reply_t& reply)
{
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(&reply));
    return {static_cast<const char*>(xcb_get_property_value(&reply)), length};
}

std::vector<std::string> desktopNamesFrom(const xcb_get_property_reply_t* reply)
{
    std::vector<std::string> names;
    if (reply == nullptr || reply->format != 8) {
        return names;
    }
    std::string_view all = textOf(*reply);
    while (!all.empty() && names.size() < mostDesktops) {
        const std::size_t end = all.find('\0');
        names.push_back(boundedUtf8(all.substr(0, std::min(end, longestDesktopName))));
        all = end == std::string_view::npos ? std::string_view() : all.substr(end + 1);
    }
    return names;
}

template <typename Value> std::vector<Value> valuesOf(const xcb_get_property_reply_t& reply)
{
    if (reply.format != 32) {
        return {};
    }
    const auto* values = static_cast<const Value*>(xcb_get_property_value(&reply));
    return {values, values + xcb_get_property_value_length(&reply) / 4};
}

} // namespace

X11ClientList::X11ClientList(XcbConnection& connection) : connection_(connection)
{
    clientListChanged();
    activeWindowChanged();
}

std::optional<std::vector<xcb_window_t>> X11ClientList::rootWindows(xcb_atom_t list) const
{
    auto reply = owned(xcb_get_property_reply(
        connection_.get(),
        ask(connection_.get(), connection_.root(), list, XCB_ATOM_WINDOW, mostWindows), nullptr));
    if (!reply || reply->type != XCB_ATOM_WINDOW) {
        return std::nullopt;
    }
    return valuesOf<xcb_window_t>(*reply);
}

std::vector<xcb_window_t> X11ClientList::stacking() const
{
    xcb_ewmh_connection_t& ewmh = connection_.ewmh();
    // Some window managers keep only the list in the order of mapping; it serves as well, as
    // the order of use is the daemon's own.
    for (const xcb_atom_t list : {ewmh._NET_CLIENT_LIST_STACKING, ewmh._NET_CLIENT_LIST}) {
        if (auto windows = rootWindows(list)) {
            return std::move(*windows);
        }
    }
    return {};
}

std::optional<xcb_window_t> X11ClientList::readActiveWindow() const
{
    xcb_ewmh_connection_t& ewmh = connection_.ewmh();
    xcb_window_t window = XCB_NONE;
    if (xcb_ewmh_get_active_window_reply(
            &ewmh, xcb_ewmh_get_active_window(&ewmh, connection_.screenNumber()), &window,
            nullptr) == 0 ||
        window == XCB_NONE) {
        return std::nullopt;
    }
    return window;
}

std::vector<std::uint64_t> X11ClientList::clientListChanged()
{
    std::vector<xcb_window_t> listed = stacking();
    std::vector<std::uint64_t> gone;
    std::erase_if(recent_, [&](xcb_window_t window) {
        if (std::find(listed.begin(), listed.end(), window) != listed.end()) {
            return false;
        }
        gone.push_back(window);
        return true;
    });
    // New windows come in above the ones never used, topmost first.
    std::vector<xcb_window_t> arrived;
    for (auto window = listed.rbegin(); window != listed.rend(); ++window) {
        if (std::find(recent_.begin(), recent_.end(), *window) == recent_.end()) {
            arrived.push_back(*window);
        }
    }
    recent_.insert(recent_.end(), arrived.begin(), arrived.end());
    // Told when a new window's icon changes; a window's properties are its own program's, so
    // the daemon only adds itself as one more listener.
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    for (const xcb_window_t window : arrived) {
        xcb_change_window_attributes(connection_.get(), window, XCB_CW_EVENT_MASK, &events);
    }
    for (const std::uint64_t window : gone) {
        icons_.erase(static_cast<xcb_window_t>(window));
    }
    return gone;
}

void X11ClientList::activeWindowChanged()
{
    const auto window = readActiveWindow();
    if (window) {
        noteUsed(*window);
        active_ = *window;
    } else {
        active_.reset();
    }
}

void X11ClientList::noteUsed(xcb_window_t window)
{
    const auto found = std::find(recent_.begin(), recent_.end(), window);
    if (found != recent_.end()) {
        std::rotate(recent_.begin(), found, found + 1);
    }
}

void X11ClientList::setPreferredIconSize(int pixels)
{
    if (pixels != preferredIconSize_) {
        preferredIconSize_ = pixels;
        icons_.clear();
    }
}

std::shared_ptr<const Bitmap> X11ClientList::iconFrom(xcb_window_t window,
                                                      xcb_get_property_cookie_t asked) const
{
    auto reply = owned(xcb_get_property_reply(connection_.get(), asked, nullptr));
    std::shared_ptr<const Bitmap> icon;
    if (reply) {
        if (auto picture =
                NetWmIcon::nearest(valuesOf<std::uint32_t>(*reply), preferredIconSize_)) {
            icon = std::make_shared<const Bitmap>(std::move(*picture));
        }
    }
    icons_[window] = icon;
    return icon;
}

std::optional<std::uint32_t> X11ClientList::currentDesktop() const
{
    xcb_ewmh_connection_t& ewmh = connection_.ewmh();
    std::uint32_t desktop = 0;
    if (xcb_ewmh_get_current_desktop_reply(
            &ewmh, xcb_ewmh_get_current_desktop(&ewmh, connection_.screenNumber()), &desktop,
            nullptr) == 0) {
        return std::nullopt;
    }
    return desktop;
}

std::vector<CycleWindow> X11ClientList::windowsInRecentOrder() const
{
    xcb_connection_t* c = connection_.get();
    xcb_ewmh_connection_t& ewmh = connection_.ewmh();
    // Asked with the windows' own properties, so that one round trip serves for all.
    const auto mappedAsked =
        ask(c, connection_.root(), ewmh._NET_CLIENT_LIST, XCB_ATOM_WINDOW, mostWindows);
    const auto namesAsked = ask(c, connection_.root(), ewmh._NET_DESKTOP_NAMES, ewmh.UTF8_STRING,
                                mostDesktops * longestDesktopName / 4);
    std::vector<Asked> asked;
    asked.reserve(recent_.size());
    for (const xcb_window_t window : recent_) {
        asked.push_back({window, ask(c, window, ewmh._NET_WM_NAME, ewmh.UTF8_STRING, textUnits),
                         ask(c, window, XCB_ATOM_WM_NAME, XCB_GET_PROPERTY_TYPE_ANY, textUnits),
                         ask(c, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, textUnits),
                         ask(c, window, ewmh._NET_WM_PID, XCB_ATOM_CARDINAL, 1),
                         ask(c, window, ewmh._NET_WM_STATE, XCB_ATOM_ATOM, 32),
                         ask(c, window, ewmh._NET_WM_DESKTOP, XCB_ATOM_CARDINAL, 1),
                         ask(c, window, ewmh._NET_WM_WINDOW_TYPE, XCB_ATOM_ATOM, 32),
                         std::nullopt});
        if (!icons_.contains(window)) {
            asked.back().icon = ask(c, window, ewmh._NET_WM_ICON, XCB_ATOM_CARDINAL, mostIconUnits);
        }
    }
    const xcb_atom_t leftOutTypes[] = {
        ewmh._NET_WM_WINDOW_TYPE_DOCK,       ewmh._NET_WM_WINDOW_TYPE_DESKTOP,
        ewmh._NET_WM_WINDOW_TYPE_MENU,       ewmh._NET_WM_WINDOW_TYPE_DROPDOWN_MENU,
        ewmh._NET_WM_WINDOW_TYPE_POPUP_MENU, ewmh._NET_WM_WINDOW_TYPE_TOOLTIP,
        ewmh._NET_WM_WINDOW_TYPE_SPLASH,     ewmh._NET_WM_WINDOW_TYPE_NOTIFICATION,
        ewmh._NET_WM_WINDOW_TYPE_COMBO,      ewmh._NET_WM_WINDOW_TYPE_DND};
    // The windows in the order the window manager took them on.
    const auto mappedReply = owned(xcb_get_property_reply(c, mappedAsked, nullptr));
    const std::vector<xcb_window_t> mapped =
        mappedReply ? valuesOf<xcb_window_t>(*mappedReply) : std::vector<xcb_window_t>();
    const std::vector<std::string> desktopNamesNow =
        desktopNamesFrom(owned(xcb_get_property_reply(c, namesAsked, nullptr)).get());
    std::vector<CycleWindow> windows;
    for (const Asked& question : asked) {
        auto netName = owned(xcb_get_property_reply(c, question.netName, nullptr));
        auto name = owned(xcb_get_property_reply(c, question.name, nullptr));
        auto windowClass = owned(xcb_get_property_reply(c, question.windowClass, nullptr));
        auto pid = owned(xcb_get_property_reply(c, question.pid, nullptr));
        auto state = owned(xcb_get_property_reply(c, question.state, nullptr));
        auto desktop = owned(xcb_get_property_reply(c, question.desktop, nullptr));
        auto type = owned(xcb_get_property_reply(c, question.type, nullptr));
        // Read at once, so that no answer is left waiting for a window that is passed over.
        const std::shared_ptr<const Bitmap> icon =
            question.icon ? iconFrom(question.window, *question.icon) : icons_[question.window];
        if (!windowClass && !netName && !name && !type) {
            continue; // gone meanwhile
        }
        bool offered = true;
        CycleWindow window;
        window.id = question.window;
        if (type) {
            for (const xcb_atom_t kind : valuesOf<xcb_atom_t>(*type)) {
                offered &= std::find(std::begin(leftOutTypes), std::end(leftOutTypes), kind) ==
                           std::end(leftOutTypes);
            }
        }
        if (state) {
            for (const xcb_atom_t flag : valuesOf<xcb_atom_t>(*state)) {
                offered &= flag != ewmh._NET_WM_STATE_SKIP_TASKBAR;
                window.minimized |= flag == ewmh._NET_WM_STATE_HIDDEN;
            }
        }
        if (!offered) {
            continue;
        }
        if (netName && netName->format == 8 && xcb_get_property_value_length(netName.get()) > 0) {
            window.title = boundedUtf8(textOf(*netName));
        } else if (name && name->format == 8) {
            window.title = fromLatin1(textOf(*name));
        }
        // WM_CLASS holds the instance and then the class, each ending in a zero byte.
        std::string className;
        if (windowClass && windowClass->format == 8) {
            const std::string_view both = textOf(*windowClass);
            const std::size_t end = both.find('\0');
            if (end != std::string_view::npos) {
                className = fromLatin1(both.substr(end + 1, both.find('\0', end + 1) - end - 1));
            }
        }
        const auto pids = pid ? valuesOf<std::uint32_t>(*pid) : std::vector<std::uint32_t>();
        window.applicationName = className.empty() ? window.title : className;
        window.applicationKey =
            className + "\n" + (pids.empty() ? std::to_string(window.id) : std::to_string(pids[0]));
        const auto desktops =
            desktop ? valuesOf<std::uint32_t>(*desktop) : std::vector<std::uint32_t>();
        if (!desktops.empty() && desktops[0] != 0xFFFFFFFF) {
            window.desktop = desktops[0];
            window.desktopName =
                desktops[0] < desktopNamesNow.size() && !desktopNamesNow[desktops[0]].empty()
                    ? desktopNamesNow[desktops[0]]
                    : std::to_string(std::uint64_t(desktops[0]) + 1);
        }
        window.icon = icon;
        window.mappedOrder = static_cast<std::uint32_t>(
            std::find(mapped.begin(), mapped.end(), question.window) - mapped.begin());
        windows.push_back(std::move(window));
    }
    return windows;
}

} // namespace vexto
