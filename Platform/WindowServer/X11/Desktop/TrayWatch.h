#pragma once

#include "WindowServer/Session.h"
#include "WindowServer/X11/Desktop/SelectionWatch.h"

#include <functional>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Whether a panel takes status icons on this server, and how.
class TrayWatch {
public:
    explicit TrayWatch(Connection& connection);

    bool isPresent() const { return m_tray.isOwned(); }
    xcb_window_t owner() const { return m_tray.owner(); }

    /// Called as a panel comes or goes, hands over to another, or tells other colours.
    std::function<void()> onChanged;

    void dock(ToolkitWindow icon, std::function<void()> docked);

    void handle(const xcb_generic_event_t& event);

private:
    Connection& m_connection;
    SelectionWatch m_tray;
    const xcb_atom_t m_colors;
    xcb_window_t m_icon = XCB_WINDOW_NONE; ///< The one that is to be docked.
    std::function<void()> m_docked;
};

} // namespace WindowServer
