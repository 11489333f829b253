#pragma once

#include <cstdint>
#include <vector>
#include <xcb/xcb.h>

namespace vexto {

// Where a window takes clicks. A panel over other windows takes them only on its own items:
// everywhere else the click goes to the window below, as if the panel were not there.
class X11InputShape {
public:
    struct Area {
        std::int16_t x;
        std::int16_t y;
        std::uint16_t width;
        std::uint16_t height;
    };
    // Only these areas (in the window's own pixels, from its top left) take clicks; none: the
    // window takes no clicks at all. False where the server has no shape extension.
    static bool takeClicksOnlyIn(xcb_connection_t* connection, xcb_window_t window,
                                 const std::vector<Area>& areas);
};

} // namespace vexto
