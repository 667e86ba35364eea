#pragma once

#include <xcb/render.h>
#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Something that a part of a cover is painted on: a window of the cover's size, or a scratch
/// pixmap for a part of it.
struct Canvas {
    xcb_drawable_t drawable = XCB_NONE;
    xcb_render_picture_t picture = XCB_NONE; ///< None on a server without Render.
    int originX = 0;                         ///< Which of the cover's pixels its own first one is.
    int originY = 0;
};

/// A window of ours as a canvas, for as long as the object lives.
class WindowCanvas {
public:
    WindowCanvas(Connection& connection, xcb_window_t window);
    ~WindowCanvas();
    WindowCanvas(const WindowCanvas&) = delete;
    WindowCanvas& operator=(const WindowCanvas&) = delete;

    operator const Canvas&() const { return m_canvas; }
    xcb_render_picture_t picture() const { return m_canvas.picture; }

private:
    Connection& m_connection;
    Canvas m_canvas;
};

} // namespace WindowServer
