#pragma once

#include "WindowServer/Session.h"

#include <functional>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Whether a panel takes status icons on this server: one that does owns the tray's selection and
/// announces itself to those who hear of the root window's structure.
class TrayWatch {
public:
    explicit TrayWatch(Connection& connection);

    /// Finds the panel that is there already.
    void look();

    bool isPresent() const { return m_owner != XCB_WINDOW_NONE; }
    xcb_window_t owner() const { return m_owner; }

    /// Called as a panel comes or goes, hands over to another, or tells other colours.
    std::function<void()> onChanged;

    void dock(ToolkitWindow icon, const std::function<void()>& docked);

    void handle(const xcb_generic_event_t& event);

private:
    bool concerns(const xcb_generic_event_t& event);

    Connection& m_connection;
    xcb_atom_t m_selection;
    xcb_atom_t m_announcement;
    xcb_atom_t m_colors;
    xcb_window_t m_owner = XCB_WINDOW_NONE;
    xcb_window_t m_icon = XCB_WINDOW_NONE; ///< The one that is to be docked.
    std::function<void()> m_docked;
};

} // namespace WindowServer
