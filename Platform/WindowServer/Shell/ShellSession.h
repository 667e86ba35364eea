#pragma once

#include "WindowServer/Shell/ShellKey.h"
#include "WindowServer/Shell/ShellLink.h"
#include "WindowServer/Shell/ShellSurfaces.h"
#include "WindowServer/Shell/ShellTray.h"
#include "WindowServer/Shell/ShellWindows.h"
#include "WindowServer/X11/X11Session.h"

namespace WindowServer {

/// The session on the X server of a Wayland session. Where that is GNOME's and has the extension,
/// the Shell covers the screens and shows what stands above the covers; else nothing can be
/// covered.
class ShellSession : public X11Session {
public:
    explicit ShellSession(std::unique_ptr<Connection> connection);

    void attach() override;
    Surfaces& surfaces() override { return m_surfaces; }
    ToolkitWindows& windows() override { return m_windows; }
    GlobalKey& key() override { return m_key; }
    Tray& tray() override { return m_tray; }

private:
    void handle(const xcb_generic_event_t& event) override;

    ShellLink m_link;
    ShellSurfaces m_surfaces;
    ShellWindows m_windows;
    ShellKey m_key;
    ShellTray m_tray;
};

} // namespace WindowServer
