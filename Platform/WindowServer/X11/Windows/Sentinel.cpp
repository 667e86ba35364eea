#include "WindowServer/X11/Windows/Sentinel.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Windows/Placement.h"

#include <xcb/composite.h>

namespace WindowServer {

Sentinel::Sentinel(Connection& connection)
    : m_connection(connection), m_window(connection.newId()) {
    // Without a background nothing is ever drawn into it.
    const uint32_t values[] = {XCB_BACK_PIXMAP_NONE, true, XCB_EVENT_MASK_VISIBILITY_CHANGE};
    xcb_create_window(connection.xcb(), XCB_COPY_FROM_PARENT, m_window, connection.root(), 0, 0, 1,
                      1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    dropInput(connection, m_window);
}

Sentinel::~Sentinel() { xcb_destroy_window(m_connection.xcb(), m_window); }

void Sentinel::place(const PixelRect& cover) const {
    configure(m_connection.xcb(), m_window,
              {cover.x + cover.width / 2, cover.y + cover.height / 2, 1, 1});
}

void Sentinel::show() const { xcb_map_window(m_connection.xcb(), m_window); }

void Sentinel::hide() const { xcb_unmap_window(m_connection.xcb(), m_window); }

/// Naming the pixmap fails for a window that is not redirected.
bool isRedirected(Connection& connection, xcb_window_t window) {
    if (!connection.hasComposite()) return false;
    const xcb_pixmap_t pixmap = connection.newId();
    const bool named =
        succeeded(connection.xcb(),
                  xcb_composite_name_window_pixmap_checked(connection.xcb(), window, pixmap));
    if (named) xcb_free_pixmap(connection.xcb(), pixmap);
    return named;
}

} // namespace WindowServer
