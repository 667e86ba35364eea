#pragma once

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Windows/Placement.h"

namespace WindowServer {

/// One pixel right under a cover. Where another program redirects the cover's picture away from the
/// screen, no event tells of it but this pixel's, which becomes visible.
class Sentinel {
public:
    explicit Sentinel(Connection& connection)
        : m_connection(connection), m_window(connection.newId()) {
        // Without a background nothing is ever drawn into it.
        const uint32_t values[] = {XCB_BACK_PIXMAP_NONE, true, XCB_EVENT_MASK_VISIBILITY_CHANGE};
        xcb_create_window(connection.xcb(), XCB_COPY_FROM_PARENT, m_window, connection.root(), 0, 0,
                          1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
                          values);
        dropInput(connection, m_window);
    }
    ~Sentinel() { xcb_destroy_window(m_connection.xcb(), m_window); }
    Sentinel(const Sentinel&) = delete;
    Sentinel& operator=(const Sentinel&) = delete;

    xcb_window_t window() const { return m_window; }

    /// Goes to the middle of the cover.
    void place(const PixelRect& cover) const {
        configure(m_connection.xcb(), m_window,
                  {cover.x + cover.width / 2, cover.y + cover.height / 2, 1, 1});
    }
    /// To be called after the cover is mapped.
    void show() const { xcb_map_window(m_connection.xcb(), m_window); }
    void hide() const { xcb_unmap_window(m_connection.xcb(), m_window); }

private:
    Connection& m_connection;
    const xcb_window_t m_window;
};

} // namespace WindowServer
