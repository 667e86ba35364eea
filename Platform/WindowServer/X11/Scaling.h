#pragma once

#include "WindowServer/Session.h"

#include <xcb/render.h>

namespace WindowServer {

/// Makes a picture that is read as a source come out `factor` times smaller (or, below 1, larger),
/// linearly interpolated. At 2 the samples fall midway between pixels: an exact 2x2 box filter.
inline void setScale(xcb_connection_t* connection, xcb_render_picture_t picture, double factor) {
    const auto fixed = static_cast<xcb_render_fixed_t>(factor * 65536);
    constexpr xcb_render_fixed_t one = 65536;
    xcb_render_set_picture_transform(connection, picture, {fixed, 0, 0, 0, fixed, 0, 0, 0, one});
    constexpr char filter[] = "bilinear";
    xcb_render_set_picture_filter(connection, picture, sizeof filter - 1, filter, 0, nullptr);
}

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
