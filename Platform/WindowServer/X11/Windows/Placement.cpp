#include "WindowServer/X11/Windows/Placement.h"

#include "WindowServer/X11/Connection.h"

#include <cmath>

#include <xcb/shape.h>

namespace WindowServer {

PixelRect pixelsOf(const CGRect& frame, const Display& display) {
    const auto pixels = [&display](double points) {
        return static_cast<int>(std::lround(points * display.scale));
    };
    const CGRect& all = display.frame;
    return {display.pixels.x + pixels(CGRectGetMinX(frame) - CGRectGetMinX(all)),
            display.pixels.y + pixels(CGRectGetMaxY(all) - CGRectGetMaxY(frame)),
            pixels(CGRectGetWidth(frame)), pixels(CGRectGetHeight(frame))};
}

void configure(xcb_connection_t* connection, xcb_window_t window, const PixelRect& place) {
    const uint32_t values[] = {static_cast<uint32_t>(place.x), static_cast<uint32_t>(place.y),
                               static_cast<uint32_t>(place.width),
                               static_cast<uint32_t>(place.height), 0};
    xcb_configure_window(connection, window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT | XCB_CONFIG_WINDOW_BORDER_WIDTH,
                         values);
}

/// A region of no rectangles at all; no region would mean the whole window.
void dropInput(Connection& connection, xcb_window_t window) {
    if (!connection.hasShape()) return;
    xcb_shape_rectangles(connection.xcb(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                         XCB_CLIP_ORDERING_UNSORTED, window, 0, 0, 0, nullptr);
}

} // namespace WindowServer
