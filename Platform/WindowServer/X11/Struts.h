#pragma once

#include "WindowServer/Session.h"

#include <vector>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// The strips along the edges of the screen that panels keep free of other programs' windows.
class Struts {
public:
    explicit Struts(Connection& connection);

    /// True where the event makes it worth while to look again.
    bool handle(const xcb_generic_event_t& event) const;

    /// Finds the panels as they are now, and listens to them from here on.
    void look();

    /// What the panels on a monitor leave of it.
    PixelRect usable(const PixelRect& monitor) const;

private:
    enum Edge { Left, Right, Top, Bottom };
    struct Strip {
        Edge edge;
        PixelRect area; ///< From that edge of the screen inwards.
    };
    struct Panel {
        xcb_window_t window;
        PixelRect area;
        std::vector<Strip> strips; ///< None while the panel lets others have its place.
    };
    struct Queries;

    std::vector<xcb_window_t> candidates();
    Queries ask(xcb_window_t window);
    void read(const Queries& queries);
    std::vector<Strip> stripsOf(const std::vector<uint32_t>& strut) const;
    bool isPanel(xcb_window_t window) const;

    Connection& m_connection;
    bool m_hasList = false; ///< Whether a window manager lists the windows it manages.
    PixelRect m_screen;     ///< The whole root window, which struts count from the edges of.
    std::vector<Panel> m_panels;
};

} // namespace WindowServer
