#pragma once

#include <map>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Lends the keyboard to windows of ours that no window manager cares for.
class KeyboardFocus {
public:
    explicit KeyboardFocus(Connection& connection) : m_connection(connection) {}

    /// The window is mapped by then.
    void take(xcb_window_t window);
    /// To the window that had it, if that still stands on the screen; else to whatever the pointer
    /// is on.
    void giveBack(xcb_window_t window);

private:
    xcb_window_t owner() const;

    Connection& m_connection;
    std::map<xcb_window_t, xcb_window_t> m_lent; ///< Whom each window has it from.
};

} // namespace WindowServer
