#pragma once

#include "Harness/Area.h"
#include "Harness/XClient.h"

#include <vector>

namespace Harness {

/// A system tray of the XEmbed kind: icons dock in a row, from the left.
class Tray {
public:
    static constexpr int iconSize = 24;

    Tray(const std::string& display, int x, int y, uint32_t ground = 0x000000);

    /// Where the icons stand on the screen, the newest last.
    std::vector<Area> icons();
    int docked(); ///< How many icons have come so far, also those that have gone again.

private:
    void listen();
    void handle(const xcb_generic_event_t& event);
    void dock(xcb_window_t icon);
    void remove(xcb_window_t icon);
    void arrange();

    XClient m_client;
    Area m_area;
    xcb_window_t m_window;
    xcb_atom_t m_opcode;
    xcb_atom_t m_embedding;
    std::vector<xcb_window_t> m_icons;
    int m_docked = 0;
};

} // namespace Harness
