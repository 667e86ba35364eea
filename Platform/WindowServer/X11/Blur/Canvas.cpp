#include "WindowServer/X11/Blur/Canvas.h"

#include "WindowServer/X11/Connection.h"

namespace WindowServer {

WindowCanvas::WindowCanvas(Connection& connection, xcb_window_t window)
    : m_connection(connection), m_canvas{window} {
    if (!connection.canScaleToScreen()) return;
    m_canvas.picture = connection.newId();
    xcb_render_create_picture(connection.xcb(), m_canvas.picture, window,
                              connection.formatOf(connection.screen().root_visual), 0, nullptr);
}

WindowCanvas::~WindowCanvas() {
    if (m_canvas.picture) xcb_render_free_picture(m_connection.xcb(), m_canvas.picture);
}

} // namespace WindowServer
