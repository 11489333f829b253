#pragma once

#include "foundation/Bitmap.hpp"

#include <cstdint>
#include <memory>
#include <xcb/xcb.h>

namespace vexto {

class XcbConnection;

// Pictures of client windows for previews. Where a compositing manager keeps the windows'
// contents off screen, the copy it keeps of the window's frame is read, so that a window others
// cover is pictured whole. Without one the screen holds the only copy: the window is read where
// it is shown, and only when nothing covers it, since the screen would give the covering
// window's pixels as its own. A window that is not shown gives none.
class X11WindowPicture {
public:
    explicit X11WindowPicture(XcbConnection& connection);

    // At most `largestSide` pixels a side, averaged down from the window's own pixels.
    std::shared_ptr<const Bitmap> take(xcb_window_t window, int largestSide) const;

    // Larger windows are not pictured: reading them would hold the server too long.
    static constexpr std::uint64_t mostPixels = 16ull * 1024 * 1024;

private:
    // The window's child of the root: the frame the window manager put it in, or itself.
    xcb_window_t topLevelOf(xcb_window_t window) const;
    struct Source {
        xcb_drawable_t drawable = XCB_NONE;
        std::int16_t x = 0;
        std::int16_t y = 0;
        xcb_pixmap_t pixmap = XCB_NONE; // to be freed
    };
    // The compositing manager's copy of the frame, and where the window lies in it.
    bool fromComposite(xcb_window_t window, xcb_window_t frame, Source& source) const;
    // Whether a window shown above the frame overlaps the window.
    bool isCovered(xcb_window_t window, xcb_window_t frame, std::uint16_t width,
                   std::uint16_t height) const;
    std::shared_ptr<const Bitmap> read(const Source& source, std::uint16_t width,
                                       std::uint16_t height, int largestSide) const;

    XcbConnection& connection_;
    bool composite_ = false;
};

} // namespace vexto
