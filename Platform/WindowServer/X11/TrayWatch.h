#pragma once

#include <functional>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Whether a panel takes status icons on this server: one that does owns the tray's selection.
/// False forever on a server without XFixes.
class TrayWatch {
public:
    explicit TrayWatch(Connection& connection);

    bool isPresent() const { return m_isPresent; }
    /// Called as a panel comes or goes, or hands over to another.
    std::function<void()> onChanged;

    void handle(const xcb_generic_event_t& event);

private:
    uint8_t m_selectionNotify = 0; ///< The event's code.
    bool m_isPresent = false;
};

} // namespace WindowServer
