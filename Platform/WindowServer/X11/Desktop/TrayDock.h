#pragma once

#include "WindowServer/Session.h"

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// What the tray says of the icons that it takes.
TrayLook lookOfTray(Connection& connection, xcb_window_t tray);

/// Takes the toolkit's window off the screen, for one that a tray takes from there looks to it as
/// if it left again, and asks the tray to take it in and show it.
void dockToolkit(Connection& connection, xcb_window_t tray, ToolkitWindow window);

/// What the tray shows beneath a window of the toolkit's that it took in, in the place of what the
/// window showed. Empty where the two are of different kinds.
Snapshot groundOfDocked(Connection& connection, ToolkitWindow window);

} // namespace WindowServer
