#pragma once

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// While it lives, every window on the screen keeps its picture in a pixmap of its own, current
/// even where other windows hide it. Costs the desktop memory and time, so it is held only while
/// covered.
class Redirection {
public:
    explicit Redirection(Connection& connection);
    ~Redirection();
    Redirection(const Redirection&) = delete;
    Redirection& operator=(const Redirection&) = delete;

    /// Takes one window out: it is drawn straight to the screen again.
    void exempt(xcb_window_t window);

private:
    Connection& m_connection;
};

} // namespace WindowServer
