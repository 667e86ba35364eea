#pragma once

#include <functional>
#include <string>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Who owns one of the screen's selections, by which a program tells that it serves as something:
/// as compositor, as tray, as the teller of settings. A server without XFixes tells of the owner at
/// the start alone.
class SelectionWatch {
public:
    /// `prefix` is the selection's name but for the screen's number. The owner's properties are
    /// heard of.
    SelectionWatch(Connection& connection, const std::string& prefix);

    bool isOwned() const { return m_owner != XCB_WINDOW_NONE; }
    xcb_window_t owner() const { return m_owner; }

    /// Called as an owner comes, goes, or takes another's place.
    std::function<void()> onChanged;

    void handle(const xcb_generic_event_t& event);

private:
    void take(xcb_window_t owner);

    Connection& m_connection;
    const xcb_atom_t m_selection;
    xcb_window_t m_owner = XCB_WINDOW_NONE;
    uint8_t m_notify = 0; ///< The event's code.
};

} // namespace WindowServer
