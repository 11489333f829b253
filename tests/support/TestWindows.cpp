// Client windows for the daemon's tests, each as a real X11 client would make it:
//
//   vexto-test-windows [--ready-fd N] CLASS:TITLE[:FLAGS] ...
//
// FLAGS, separated by commas: minimized, desktop=N, skip-taskbar, dock, icon (16 pixels a side
// of opaque red and 48 of half-transparent blue), big (600 by 400 pixels in the middle of a
// 1024 by 768 screen, where panels show), colour=RRGGBB (its background; else white), and x=N
// and y=N (its place; else 20 pixels further down and right than the one before). Each window is
// mapped with its WM_CLASS, _NET_WM_NAME, WM_NAME and _NET_WM_PID; a line with the window ids
// (decimal, in the order given) is written once the window manager manages them all, on standard
// output or on descriptor N. It then runs until SIGTERM or until the window manager asks it to
// close a window (WM_DELETE_WINDOW).
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>
#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>
#include <xcb/xcb_icccm.h>

namespace {

struct Wanted {
    std::string windowClass;
    std::string title;
    bool minimized = false;
    bool skipTaskbar = false;
    bool dock = false;
    bool big = false;
    bool icon = false;
    long desktop = -1;
    std::optional<std::uint32_t> colour;
    std::optional<std::int16_t> x;
    std::optional<std::int16_t> y;
};

Wanted parse(const std::string& text)
{
    Wanted wanted;
    const auto first = text.find(':');
    const auto second = text.find(':', first == std::string::npos ? first : first + 1);
    wanted.windowClass = text.substr(0, first);
    wanted.title = first == std::string::npos ? wanted.windowClass
                                              : text.substr(first + 1, second - first - 1);
    std::string flags = second == std::string::npos ? std::string() : text.substr(second + 1);
    while (!flags.empty()) {
        const auto comma = flags.find(',');
        const std::string flag = flags.substr(0, comma);
        flags = comma == std::string::npos ? std::string() : flags.substr(comma + 1);
        if (flag == "minimized") {
            wanted.minimized = true;
        } else if (flag == "skip-taskbar") {
            wanted.skipTaskbar = true;
        } else if (flag == "dock") {
            wanted.dock = true;
        } else if (flag == "big") {
            wanted.big = true;
        } else if (flag == "icon") {
            wanted.icon = true;
        } else if (flag.rfind("x=", 0) == 0 || flag.rfind("y=", 0) == 0) {
            (flag[0] == 'x' ? wanted.x : wanted.y) =
                std::int16_t(std::strtol(flag.c_str() + 2, nullptr, 10));
        } else if (flag.rfind("colour=", 0) == 0) {
            wanted.colour = std::uint32_t(std::strtoul(flag.c_str() + 7, nullptr, 16));
        } else if (flag.rfind("desktop=", 0) == 0) {
            wanted.desktop = std::strtol(flag.c_str() + 8, nullptr, 10);
        }
    }
    return wanted;
}

// The windows the window manager does not list as its clients yet.
std::vector<xcb_window_t> unmanaged(xcb_ewmh_connection_t& ewmh,
                                    const std::vector<xcb_window_t>& windows)
{
    xcb_ewmh_get_windows_reply_t list{};
    if (xcb_ewmh_get_client_list_reply(&ewmh, xcb_ewmh_get_client_list(&ewmh, 0), &list, nullptr) ==
        0) {
        return windows;
    }
    std::vector<xcb_window_t> missing;
    for (xcb_window_t window : windows) {
        if (std::find(list.windows, list.windows + list.windows_len, window) ==
            list.windows + list.windows_len) {
            missing.push_back(window);
        }
    }
    xcb_ewmh_get_windows_reply_wipe(&list);
    return missing;
}

} // namespace

int main(int argc, char** argv)
{
    int screenNumber = 0;
    xcb_connection_t* c = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(c) != 0) {
        std::fprintf(stderr, "vexto-test-windows: no display\n");
        return 1;
    }
    xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    xcb_ewmh_connection_t ewmh{};
    xcb_ewmh_init_atoms_replies(&ewmh, xcb_ewmh_init_atoms(c, &ewmh), nullptr);
    const auto intern = [&](const char* name) {
        auto* reply = xcb_intern_atom_reply(
            c, xcb_intern_atom(c, 0, std::uint16_t(std::strlen(name)), name), nullptr);
        const xcb_atom_t atom = reply->atom;
        std::free(reply);
        return atom;
    };
    const xcb_atom_t protocols = intern("WM_PROTOCOLS");
    xcb_atom_t deleteWindow = intern("WM_DELETE_WINDOW");

    std::vector<xcb_window_t> windows;
    std::vector<Wanted> wanted;
    int readyFd = 1;
    int first = 1;
    if (argc > 2 && std::strcmp(argv[1], "--ready-fd") == 0) {
        readyFd = std::atoi(argv[2]);
        first = 3;
    }
    for (int i = first; i < argc; ++i) {
        const Wanted w = parse(argv[i]);
        const xcb_window_t window = xcb_generate_id(c);
        // On the true-colour screens of the tests a pixel value is its RGB.
        const std::uint32_t values[] = {w.colour.value_or(screen->white_pixel),
                                        XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_KEY_PRESS};
        const auto left = w.x.value_or(std::int16_t(w.big ? 212 : 20 * i));
        const auto top = w.y.value_or(std::int16_t(w.big ? 184 : 20 * i));
        xcb_create_window(c, XCB_COPY_FROM_PARENT, window, screen->root, left, top,
                          w.big ? 600 : 200, w.big ? 400 : 120, 1, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          screen->root_visual, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
        // Placed where it was made, as a program that remembers its place asks.
        xcb_size_hints_t placement{};
        xcb_icccm_size_hints_set_position(&placement, 1, left, top);
        xcb_icccm_set_wm_normal_hints(c, window, &placement);
        const std::string classes = w.windowClass + std::string(1, '\0') + w.windowClass;
        xcb_icccm_set_wm_class(c, window, std::uint32_t(classes.size() + 1), classes.c_str());
        xcb_icccm_set_wm_name(c, window, XCB_ATOM_STRING, 8, std::uint32_t(w.title.size()),
                              w.title.c_str());
        xcb_ewmh_set_wm_name(&ewmh, window, std::uint32_t(w.title.size()), w.title.c_str());
        xcb_ewmh_set_wm_pid(&ewmh, window, std::uint32_t(::getpid()));
        xcb_icccm_set_wm_protocols(c, window, protocols, 1, &deleteWindow);
        if (w.desktop >= 0) {
            xcb_ewmh_set_wm_desktop(&ewmh, window, std::uint32_t(w.desktop));
        }
        std::vector<xcb_atom_t> states;
        if (w.skipTaskbar) {
            states.push_back(ewmh._NET_WM_STATE_SKIP_TASKBAR);
        }
        if (!states.empty()) {
            xcb_ewmh_set_wm_state(&ewmh, window, std::uint32_t(states.size()), states.data());
        }
        if (w.dock) {
            xcb_atom_t dock = ewmh._NET_WM_WINDOW_TYPE_DOCK;
            xcb_ewmh_set_wm_window_type(&ewmh, window, 1, &dock);
        }
        if (w.icon) {
            std::vector<std::uint32_t> icon = {16, 16};
            icon.insert(icon.end(), 16 * 16, 0xFFFF0000);
            icon.insert(icon.end(), {48, 48});
            icon.insert(icon.end(), 48 * 48, 0x800000FF);
            xcb_ewmh_set_wm_icon(&ewmh, XCB_PROP_MODE_REPLACE, window, std::uint32_t(icon.size()),
                                 icon.data());
        }
        if (w.minimized) {
            xcb_icccm_wm_hints_t hints{};
            xcb_icccm_wm_hints_set_iconic(&hints);
            xcb_icccm_set_wm_hints(c, window, &hints);
        }
        xcb_map_window(c, window);
        windows.push_back(window);
        wanted.push_back(w);
    }
    xcb_flush(c);
    // Docks are not clients of the list that says when the others are managed.
    std::vector<xcb_window_t> listed;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        if (!wanted[i].dock) {
            listed.push_back(windows[i]);
        }
    }
    for (int round = 1; round <= 2000; ++round) {
        const std::vector<xcb_window_t> missing = unmanaged(ewmh, listed);
        if (missing.empty()) {
            break;
        }
        ::usleep(10000);
        // A window mapped while the window manager was still starting may have been passed
        // over: it is mapped again, as a program would show a window anew. Only those: a map
        // request for a managed minimised window would restore it.
        if (round % 50 == 0) {
            for (const xcb_window_t window : missing) {
                xcb_unmap_window(c, window);
                xcb_map_window(c, window);
            }
            xcb_flush(c);
        }
    }
    std::string ids;
    for (xcb_window_t window : windows) {
        ids += (ids.empty() ? "" : " ") + std::to_string(window);
    }
    ids += '\n';
    if (::write(readyFd, ids.data(), ids.size()) != ssize_t(ids.size())) {
        return 1;
    }

    // SIGTERM ends it where it waits.
    while (xcb_generic_event_t* event = xcb_wait_for_event(c)) {
        const bool leave =
            (event->response_type & 0x7F) == XCB_CLIENT_MESSAGE &&
            reinterpret_cast<xcb_client_message_event_t*>(event)->data.data32[0] == deleteWindow;
        std::free(event);
        if (leave) {
            break;
        }
    }
    xcb_ewmh_connection_wipe(&ewmh);
    xcb_disconnect(c);
    return 0;
}
