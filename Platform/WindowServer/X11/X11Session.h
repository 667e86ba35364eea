#pragma once

#include "WindowServer/Session.h"
#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Desktop/DisplayList.h"
#include "WindowServer/X11/Desktop/KeyGrab.h"
#include "WindowServer/X11/Desktop/SelectionWatch.h"
#include "WindowServer/X11/Desktop/X11Tray.h"
#include "WindowServer/X11/Desktop/XSettings.h"
#include "WindowServer/X11/Windows/Covers.h"
#include "WindowServer/X11/Windows/Stacking.h"
#include "WindowServer/X11/Windows/ToolkitGuard.h"

namespace WindowServer {

/// The session on an X server: hands each subject its events, and tells one of another's changes.
class X11Session : public Session {
public:
    explicit X11Session(std::unique_ptr<Connection> connection);

    void attach() override;
    Displays& displays() override { return m_displays; }
    Surfaces& surfaces() override { return m_covers; }
    ToolkitWindows& windows() override { return m_windows; }
    GlobalKey& key() override { return m_key; }
    Settings& settings() override { return m_settings; }
    Tray& tray() override { return m_tray; }

protected:
    Connection& connection() { return *m_connection; }
    virtual void handle(const xcb_generic_event_t& event);

private:
    void coverPlainly();

    std::unique_ptr<Connection> m_connection;
    DisplayList m_displays;
    SelectionWatch m_compositor;
    X11Tray m_tray;
    XSettings m_settings;
    KeyGrab m_key;
    Stacking m_stacking;
    ToolkitGuard m_windows;
    Covers m_covers;
    bool m_wasRefused = false; ///< The log has heard of it.
};

} // namespace WindowServer
