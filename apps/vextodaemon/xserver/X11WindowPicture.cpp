#include "xserver/X11WindowPicture.hpp"

#include "xserver/XcbConnection.hpp"
#include "xserver/XcbReply.hpp"

#include <algorithm>
#include <cmath>
#include <vector>
#include <xcb/composite.h>

namespace vexto {

namespace {

// Deeper than any window manager nests its frames.
constexpr int deepestNesting = 16;

struct PixelLayout {
    bool leastSignificantFirst = true;
    bool hasAlpha = false;
};

// Only 32 bits a pixel are read: the depths 24 and 32 of every true-colour screen in use.
bool layoutOf(const xcb_setup_t* setup, std::uint8_t depth, PixelLayout& layout)
{
    if (depth != 24 && depth != 32) {
        return false;
    }
    for (auto format = xcb_setup_pixmap_formats_iterator(setup); format.rem != 0;
         xcb_format_next(&format)) {
        if (format.data->depth == depth) {
            layout.leastSignificantFirst = setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
            layout.hasAlpha = depth == 32;
            return format.data->bits_per_pixel == 32;
        }
    }
    return false;
}

// The average of the source pixels each picture pixel covers, as straight red, green, blue and
// alpha.
Bitmap averagedDown(const std::uint8_t* data, int width, int height, PixelLayout layout,
                    int largestSide)
{
    const double factor = std::max(1.0, double(std::max(width, height)) / largestSide);
    Bitmap picture;
    picture.width = std::max(1, int(std::lround(width / factor)));
    picture.height = std::max(1, int(std::lround(height / factor)));
    picture.rgba.resize(std::size_t(picture.width) * std::size_t(picture.height) * 4);
    const int red = layout.leastSignificantFirst ? 2 : 1;
    const int green = layout.leastSignificantFirst ? 1 : 2;
    const int blue = layout.leastSignificantFirst ? 0 : 3;
    const int alpha = layout.leastSignificantFirst ? 3 : 0;
    for (int y = 0; y < picture.height; ++y) {
        const int top = y * height / picture.height;
        const int bottom = std::max(top + 1, (y + 1) * height / picture.height);
        for (int x = 0; x < picture.width; ++x) {
            const int left = x * width / picture.width;
            const int right = std::max(left + 1, (x + 1) * width / picture.width);
            std::uint64_t sums[4] = {};
            for (int row = top; row < bottom; ++row) {
                const std::uint8_t* pixel =
                    data + (std::size_t(row) * std::size_t(width) + std::size_t(left)) * 4;
                for (int column = left; column < right; ++column, pixel += 4) {
                    sums[0] += pixel[red];
                    sums[1] += pixel[green];
                    sums[2] += pixel[blue];
                    sums[3] += layout.hasAlpha ? pixel[alpha] : 255;
                }
            }
            const std::uint64_t count = std::uint64_t(bottom - top) * std::uint64_t(right - left);
            std::uint8_t* out =
                &picture.rgba[(std::size_t(y) * std::size_t(picture.width) + std::size_t(x)) * 4];
            const std::uint64_t opacity = sums[3];
            for (int channel = 0; channel < 3; ++channel) {
                // Windows of depth 32 hold premultiplied colour: straightened here.
                const std::uint64_t straight =
                    layout.hasAlpha ? (opacity == 0 ? 0 : sums[channel] * 255 / opacity)
                                    : sums[channel] / count;
                out[channel] = std::uint8_t(std::min<std::uint64_t>(straight, 255));
            }
            out[3] = std::uint8_t(opacity / count);
        }
    }
    return picture;
}

} // namespace

X11WindowPicture::X11WindowPicture(XcbConnection& connection) : connection_(connection)
{
    xcb_connection_t* c = connection_.get();
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(c, &xcb_composite_id);
    if (extension == nullptr || extension->present == 0) {
        return;
    }
    // Naming a window's pixmap came with version 0.2.
    auto version =
        owned(xcb_composite_query_version_reply(c, xcb_composite_query_version(c, 0, 4), nullptr));
    composite_ = version && (version->major_version > 0 || version->minor_version >= 2);
}

xcb_window_t X11WindowPicture::topLevelOf(xcb_window_t window) const
{
    xcb_connection_t* c = connection_.get();
    for (int depth = 0; depth < deepestNesting; ++depth) {
        auto tree = owned(xcb_query_tree_reply(c, xcb_query_tree(c, window), nullptr));
        if (!tree || tree->parent == XCB_NONE || tree->parent == tree->root) {
            return window;
        }
        window = tree->parent;
    }
    return window;
}

bool X11WindowPicture::fromComposite(xcb_window_t window, xcb_window_t frame, Source& source) const
{
    if (!composite_) {
        return false;
    }
    xcb_connection_t* c = connection_.get();
    const xcb_pixmap_t pixmap = xcb_generate_id(c);
    // Refused unless something redirects the frame: then no compositing manager keeps it.
    if (auto* error =
            xcb_request_check(c, xcb_composite_name_window_pixmap_checked(c, frame, pixmap))) {
        std::free(error);
        return false;
    }
    auto place = owned(xcb_translate_coordinates_reply(
        c, xcb_translate_coordinates(c, window, frame, 0, 0), nullptr));
    auto frameGeometry = owned(xcb_get_geometry_reply(c, xcb_get_geometry(c, frame), nullptr));
    if (!place || !frameGeometry) {
        xcb_free_pixmap(c, pixmap);
        return false;
    }
    // The pixmap holds the frame's border too.
    source = {pixmap, std::int16_t(place->dst_x + frameGeometry->border_width),
              std::int16_t(place->dst_y + frameGeometry->border_width), pixmap};
    return true;
}

bool X11WindowPicture::isCovered(xcb_window_t window, xcb_window_t frame, std::uint16_t width,
                                 std::uint16_t height) const
{
    xcb_connection_t* c = connection_.get();
    auto place = owned(xcb_translate_coordinates_reply(
        c, xcb_translate_coordinates(c, window, connection_.root(), 0, 0), nullptr));
    auto tree = owned(xcb_query_tree_reply(c, xcb_query_tree(c, connection_.root()), nullptr));
    if (!place || !tree) {
        return true;
    }
    // The root's children from the bottom up: those after the frame lie above it.
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    const int count = xcb_query_tree_children_length(tree.get());
    const auto frameAt = std::find(children, children + count, frame);
    if (frameAt == children + count) {
        return true;
    }
    std::vector<xcb_get_window_attributes_cookie_t> attributes;
    std::vector<xcb_get_geometry_cookie_t> geometries;
    for (const xcb_window_t* above = frameAt + 1; above != children + count; ++above) {
        attributes.push_back(xcb_get_window_attributes(c, *above));
        geometries.push_back(xcb_get_geometry(c, *above));
    }
    const long left = place->dst_x;
    const long top = place->dst_y;
    bool covered = false;
    for (std::size_t at = 0; at < attributes.size(); ++at) {
        auto shown = owned(xcb_get_window_attributes_reply(c, attributes[at], nullptr));
        auto box = owned(xcb_get_geometry_reply(c, geometries[at], nullptr));
        if (covered || !shown || !box || shown->map_state != XCB_MAP_STATE_VIEWABLE ||
            shown->_class == XCB_WINDOW_CLASS_INPUT_ONLY) {
            continue;
        }
        const long reach = 2L * box->border_width;
        covered = box->x < left + width && box->x + box->width + reach > left &&
                  box->y < top + height && box->y + box->height + reach > top;
    }
    return covered;
}

std::shared_ptr<const Bitmap> X11WindowPicture::take(xcb_window_t window, int largestSide) const
{
    xcb_connection_t* c = connection_.get();
    auto attributes =
        owned(xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, window), nullptr));
    auto geometry = owned(xcb_get_geometry_reply(c, xcb_get_geometry(c, window), nullptr));
    if (!attributes || !geometry || attributes->map_state != XCB_MAP_STATE_VIEWABLE ||
        largestSide <= 0 || geometry->width == 0 || geometry->height == 0 ||
        std::uint64_t(geometry->width) * geometry->height > mostPixels) {
        return nullptr;
    }
    Source source{window, 0, 0, XCB_NONE};
    const xcb_window_t frame = topLevelOf(window);
    if (!fromComposite(window, frame, source) &&
        isCovered(window, frame, geometry->width, geometry->height)) {
        return nullptr;
    }
    auto picture = read(source, geometry->width, geometry->height, largestSide);
    if (source.pixmap != XCB_NONE) {
        xcb_free_pixmap(c, source.pixmap);
        xcb_flush(c);
    }
    return picture;
}

std::shared_ptr<const Bitmap> X11WindowPicture::read(const Source& source, std::uint16_t width,
                                                     std::uint16_t height, int largestSide) const
{
    xcb_connection_t* c = connection_.get();
    auto image =
        owned(xcb_get_image_reply(c,
                                  xcb_get_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, source.drawable,
                                                source.x, source.y, width, height, ~0u),
                                  nullptr));
    PixelLayout layout;
    if (!image || !layoutOf(xcb_get_setup(c), image->depth, layout)) {
        return nullptr;
    }
    const auto length = std::size_t(xcb_get_image_data_length(image.get()));
    if (length < std::size_t(width) * std::size_t(height) * 4) {
        return nullptr;
    }
    return std::make_shared<const Bitmap>(
        averagedDown(xcb_get_image_data(image.get()), width, height, layout, largestSide));
}

} // namespace vexto
