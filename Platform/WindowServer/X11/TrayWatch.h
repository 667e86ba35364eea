#pragma once

#include <functional>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Whether a panel takes status icons on this server: one that does owns the tray's selection and
/// announces itself to those who hear of the root window's structure.
class TrayWatch {
public:
    explicit TrayWatch(Connection& connection);

    /// Finds the panel that is there already. To be called once announcements are heard.
    void look();

    bool isPresent() const { return m_owner != XCB_WINDOW_NONE; }
    /// Called as a panel comes or goes, or hands over to another.
    std::function<void()> onChanged;

    void handle(const xcb_generic_event_t& event);

private:
    Connection& m_connection;
    xcb_atom_t m_selection;
    xcb_atom_t m_announcement;
    xcb_window_t m_owner = XCB_WINDOW_NONE;
};

} // namespace WindowServer
