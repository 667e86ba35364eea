#pragma once

#include "WindowServer/PixelRect.h"

#include <set>
#include <vector>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// What panels keep free of other programs' windows: the strips along the edges of the screen that
/// they ask for, and the areas that a shell leaves which draws its panels itself.
class Struts {
public:
    explicit Struts(Connection& connection) : m_connection(connection) {}

    /// True where the event makes it worth while to look again.
    bool handle(const xcb_generic_event_t& event) const;

    /// Finds the panels as they are now, and listens to them from here on.
    void look();

    /// What the panels on a monitor leave of it.
    PixelRect usable(const PixelRect& monitor) const;

private:
    struct Strip {
        PixelRect area; ///< From an edge of the screen inwards.
        PixelRect rest; ///< What it leaves of the screen, were it as long as the edge.
    };
    struct Panel {
        xcb_window_t window;
        PixelRect area;
        std::vector<Strip> strips; ///< None while the panel lets others have its place.
    };

    std::set<xcb_window_t> candidates() const;
    std::vector<xcb_window_t> withChildren(const std::vector<xcb_window_t>& windows) const;
    std::vector<Panel> panelsAmong(const std::set<xcb_window_t>& windows) const;
    std::vector<PixelRect> workAreas() const;
    std::vector<Strip> stripsOf(const std::vector<uint32_t>& strut) const;

    Connection& m_connection;
    PixelRect m_screen; ///< The whole root window, which struts count from the edges of.
    std::vector<Panel> m_panels;
    std::vector<PixelRect> m_workAreas; ///< One for each monitor, where a shell tells them.
};

} // namespace WindowServer
