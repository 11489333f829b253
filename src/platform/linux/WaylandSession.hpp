#pragma once

#include <optional>
#include <string>

namespace vexto {

// Whether the session the program runs in is a Wayland one, where the compositor owns the
// keyboard and the windows: no client may grab keys for the whole desktop or activate another
// program's window, and Xwayland shows only the X11 programs.
class WaylandSession {
public:
    // What says so ("XDG_SESSION_TYPE is wayland", "WAYLAND_DISPLAY is wayland-0"); none in
    // another session.
    static std::optional<std::string> evidence();
    static bool isCurrent() { return evidence().has_value(); }
};

} // namespace vexto
