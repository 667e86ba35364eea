#pragma once

#include "WindowServer/PixelRect.h"

#include <xcb/render.h>

namespace WindowServer {

/// Something that can be drawn at half its size: the desktop in one of its forms.
class Drawable {
public:
    virtual ~Drawable() = default;

    /// Draws the area, in root pixels, at half its size into a picture whose pixel (0, 0) is the
    /// root's pixel (originX, originY).
    virtual void drawHalf(xcb_render_picture_t target, const PixelRect& area, int originX,
                          int originY) = 0;
};

} // namespace WindowServer
