#pragma once

#include "WindowServer/Shell/KeyboardHolder.h"
#include "WindowServer/Shell/ShellLink.h"
#include "WindowServer/ToolkitWindows.h"

#include <map>

namespace WindowServer {

/// The toolkit's windows on the X server, and those of them that have a level above the covers,
/// where the Shell draws them.
class ShellWindows : public ToolkitWindows {
public:
    ShellWindows(Connection& connection, ToolkitWindows& onServer, ShellLink& link);

    std::shared_ptr<ToolkitWindow> hold(WindowId window) override;
    bool hasManager() const override { return m_onServer.hasManager(); }
    bool areComposited() const override { return m_onServer.areComposited(); }

    /// Tells all of it anew.
    void attached();
    void handle(const xcb_generic_event_t& event);
    /// What a press elsewhere does to popups that hold the mouse, of which the X server hears
    /// nothing where the press goes to a window of Wayland's.
    static void closePopups();

private:
    class Lifted;

    ToolkitWindows& m_onServer;
    ShellLink& m_link;
    KeyboardHolder m_keyboard;
    std::map<WindowId, Lifted*> m_windows;
};

} // namespace WindowServer
