// How many pixels of the screen have one colour, for the daemon's tests to find what it shows:
//
//   vexto-test-screen-colours RRGGBB
//
// prints the count of the root window's pixels of exactly that colour (a true-colour screen of
// depth 24, as the tests' X servers have), or exits with 1 where the screen cannot be read.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <xcb/xcb.h>

int main(int argc, char** argv)
{
    if (argc != 2 || std::strlen(argv[1]) != 6) {
        std::fprintf(stderr, "usage: vexto-test-screen-colours RRGGBB\n");
        return 2;
    }
    const unsigned long wanted = std::strtoul(argv[1], nullptr, 16);
    xcb_connection_t* c = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(c) != 0) {
        std::fprintf(stderr, "vexto-test-screen-colours: no display\n");
        return 1;
    }
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    auto* image =
        xcb_get_image_reply(c,
                            xcb_get_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root, 0, 0,
                                          screen->width_in_pixels, screen->height_in_pixels, ~0u),
                            nullptr);
    if (image == nullptr || image->depth != 24) {
        std::fprintf(stderr, "vexto-test-screen-colours: the screen cannot be read\n");
        return 1;
    }
    const std::uint8_t* data = xcb_get_image_data(image);
    const int length = xcb_get_image_data_length(image);
    unsigned long count = 0;
    // Four bytes a pixel, blue first.
    for (int at = 0; at + 3 < length; at += 4) {
        const unsigned long pixel =
            (unsigned long)data[at + 2] << 16 | (unsigned long)data[at + 1] << 8 | data[at];
        count += pixel == wanted ? 1 : 0;
    }
    std::printf("%lu\n", count);
    std::free(image);
    xcb_disconnect(c);
    return 0;
}
