#pragma once

#include "WindowServer/PixelRect.h"

#include <string_view>

#include <xcb/render.h>

namespace WindowServer {

class Connection;

/// Makes a picture that is read as a source come out `factor` times smaller or, below 1, larger.
/// With the bilinear filter a factor of 2 samples midway between pixels: an exact 2x2 box filter.
inline void setScale(xcb_connection_t* connection, xcb_render_picture_t picture, double factor,
                     std::string_view filter = "bilinear") {
    const auto fixed = static_cast<xcb_render_fixed_t>(factor * 65536);
    constexpr xcb_render_fixed_t one = 65536;
    xcb_render_set_picture_transform(connection, picture, {fixed, 0, 0, 0, fixed, 0, 0, 0, one});
    xcb_render_set_picture_filter(connection, picture, static_cast<uint16_t>(filter.size()),
                                  filter.data(), 0, nullptr);
}

/// Makes a pixmap of depth 24 and a picture of it, whose edge pixels go on where a source ends.
xcb_render_picture_t makePicture(Connection& connection, xcb_pixmap_t pixmap, int width,
                                 int height);

/// Draws `to` of the target from the source, whose (sourceX, sourceY), counted in the target's
/// pixels, falls on its upper left corner.
inline void composite(xcb_connection_t* connection, uint8_t operation, xcb_render_picture_t source,
                      xcb_render_picture_t target, int sourceX, int sourceY, const PixelRect& to) {
    xcb_render_composite(connection, operation, source, XCB_NONE, target,
                         static_cast<int16_t>(sourceX), static_cast<int16_t>(sourceY), 0, 0,
                         static_cast<int16_t>(to.x), static_cast<int16_t>(to.y),
                         static_cast<uint16_t>(to.width), static_cast<uint16_t>(to.height));
}

} // namespace WindowServer
