#include "xserver/X11InputShape.hpp"

#include <xcb/shape.h>

namespace vexto {

bool X11InputShape::takeClicksOnlyIn(xcb_connection_t* connection, xcb_window_t window,
                                     const std::vector<Area>& areas)
{
    const xcb_query_extension_reply_t* shape = xcb_get_extension_data(connection, &xcb_shape_id);
    if (shape == nullptr || shape->present == 0) {
        return false;
    }
    std::vector<xcb_rectangle_t> rectangles;
    rectangles.reserve(areas.size());
    for (const Area& area : areas) {
        rectangles.push_back({area.x, area.y, area.width, area.height});
    }
    xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                         XCB_CLIP_ORDERING_UNSORTED, window, 0, 0,
                         static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
    xcb_flush(connection);
    return true;
}

} // namespace vexto
