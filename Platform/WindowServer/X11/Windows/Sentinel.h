#pragma once

#include "WindowServer/PixelRect.h"

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// One pixel right under a cover. Another program can have the server keep the cover's picture from
/// the screen, of which nobody is told; but then the server tells that this pixel can be seen.
class Sentinel {
public:
    explicit Sentinel(Connection& connection);
    ~Sentinel();
    Sentinel(const Sentinel&) = delete;
    Sentinel& operator=(const Sentinel&) = delete;

    xcb_window_t window() const { return m_window; }

    /// Goes to the middle of the cover.
    void place(const PixelRect& cover) const;
    /// To be called while the cover stands on the screen already.
    void show() const;
    void hide() const;

private:
    Connection& m_connection;
    xcb_window_t m_window;
};

/// Whether the window's picture goes to a pixmap, and no longer straight to the screen.
bool isRedirected(Connection& connection, xcb_window_t window);

} // namespace WindowServer
