#pragma once

#include "WindowServer/DisplayNumbers.h"
#include "WindowServer/Displays.h"
#include "WindowServer/X11/Desktop/Struts.h"

#include <QTimer>

#include <vector>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// The connected displays, with what panels leave of them, kept current.
class DisplayList : public Displays {
public:
    explicit DisplayList(Connection& connection);

    /// To be called once the application object exists, for the toolkit tells the scales.
    void attach();

    const std::vector<Display>& all() const override { return m_displays; }
    /// Called before `onChanged`, for what stands on the displays.
    std::function<void()> onRefreshed;

    /// Takes note of monitors; panels are asked for apart, for that takes questions to the server.
    void handle(const xcb_generic_event_t& event);
    void handlePanels(const xcb_generic_event_t& event);

private:
    std::vector<Display> read();
    void refresh();

    Connection& m_connection;
    DisplayNumbers m_numbers;
    Struts m_struts;
    std::vector<Display> m_displays;
    QTimer m_refresh;
};

} // namespace WindowServer
