#pragma once

#include "WindowServer/PixelRect.h"

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// One pixel right under a cover. Where another program redirects the cover's picture away from the
/// screen, no event tells of it but this pixel's, which becomes visible.
class Sentinel {
public:
    explicit Sentinel(Connection& connection);
    ~Sentinel();
    Sentinel(const Sentinel&) = delete;
    Sentinel& operator=(const Sentinel&) = delete;

    xcb_window_t window() const { return m_window; }

    /// Goes to the middle of the cover.
    void place(const PixelRect& cover) const;
    /// To be called after the cover is mapped.
    void show() const;
    void hide() const;

private:
    Connection& m_connection;
    xcb_window_t m_window;
};

/// Whether the window is redirected: drawn into a pixmap instead of the screen.
bool isRedirected(Connection& connection, xcb_window_t window);

} // namespace WindowServer
