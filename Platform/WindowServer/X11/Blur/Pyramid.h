#pragma once

#include "WindowServer/GaussianBlur.h"
#include "WindowServer/PixelRect.h"

#include <memory>
#include <vector>

#include <xcb/render.h>
#include <xcb/xcb.h>

namespace WindowServer {

class Connection;
class Drawable;

/// Halves a monitor's part of the desktop again and again inside the server and hands out only the
/// small picture that is left. It works in bands a few rows high, whose scratch pictures stay in
/// the processor's cache and cost the server next to no memory.
class Pyramid {
public:
    /// `width` and `height` in device pixels; `halvings` of at least 1.
    Pyramid(Connection& connection, int width, int height, int halvings);
    ~Pyramid();
    Pyramid(const Pyramid&) = delete;
    Pyramid& operator=(const Pyramid&) = delete;

    /// A small picture on its way from the server.
    struct Request {
        PixelRect part; ///< In small pixels.
        xcb_get_image_cookie_t cookie;
    };

    /// Reduces `area`, in root pixels, of the monitor at (originX, originY) and asks for the
    /// result.
    Request request(Drawable& desktop, const PixelRect& area, int originX, int originY);

    /// Waits for the request and puts its part into `image`. False where the server refused.
    bool receive(const Request& request, SmallImage& image) const;

private:
    class Band;

    void reduce(Drawable& desktop, const PixelRect& part, int originX, int originY);

    Connection& m_connection;
    int m_factor;
    int m_smallWidth;
    int m_smallHeight;
    int m_rowsPerBand; ///< In small pixels.
    xcb_pixmap_t m_pixmap;
    xcb_render_picture_t m_picture;
    std::unique_ptr<Band> m_band;
    std::unique_ptr<Band> m_lastBand; ///< Lower than the others where the height is no multiple.
};

} // namespace WindowServer
