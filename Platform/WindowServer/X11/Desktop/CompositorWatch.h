#pragma once

#include <functional>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Whether a compositor runs on this server: one that does owns a selection. False forever on a
/// server without XFixes, for compositors need it too.
class CompositorWatch {
public:
    explicit CompositorWatch(Connection& connection);

    bool isPresent() const { return m_owner != XCB_WINDOW_NONE; }
    /// The compositor's own window: another one for each compositor that comes.
    xcb_window_t owner() const { return m_owner; }
    /// Called as a compositor comes, goes, or takes another's place.
    std::function<void()> onChanged;

    void handle(const xcb_generic_event_t& event);

private:
    xcb_atom_t m_selection;
    xcb_window_t m_owner = XCB_WINDOW_NONE;
    uint8_t m_selectionNotify = 0; ///< The event's code.
};

} // namespace WindowServer
