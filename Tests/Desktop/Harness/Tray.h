#pragma once

#include "Harness/Area.h"
#include "Harness/XClient.h"

namespace Harness {

/// A system tray of the XEmbed kind: icons dock in a row, from the left.
class Tray {
public:
    static constexpr int iconSize = 24;

    Tray(const std::string& display, int x, int y, uint32_t ground = 0x000000);

    std::vector<Area> icons(); ///< Where the icons stand on the screen, the newest last.
    int docked();              ///< How many icons have come so far, also those that have gone.

private:
    void dock(xcb_window_t icon);

    XClient m_client;
    Point m_corner;
    xcb_window_t m_window;
    int m_docked = 0;
};

} // namespace Harness
