#pragma once

#include "WindowServer/Desktop.h"
#include "WindowServer/X11/Desktop/SelectionWatch.h"

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// The panel that owns the tray's selection and takes windows in.
class X11Tray : public Tray {
public:
    explicit X11Tray(Connection& connection);

    bool isPresent() const override { return m_panel.isOwned(); }
    TrayLook look() const override;
    void dock(WindowId icon, const std::function<void()>& docked) override;
    Snapshot groundOfDocked() const override;

    void handle(const xcb_generic_event_t& event);

private:
    Connection& m_connection;
    SelectionWatch m_panel;
    const xcb_atom_t m_colors;
    xcb_window_t m_icon = XCB_WINDOW_NONE; ///< The one that is to be docked.
    std::function<void()> m_docked;
};

} // namespace WindowServer
