// Where windows stand on the screen, and where they take no input.
#pragma once

#include "WindowServer/Displays.h"

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// The frame (points, y up) in the server's pixels (y down), by the display's scale.
PixelRect pixelsOf(const CGRect& frame, const Display& display);

/// Sends the window there, without a border.
void configure(xcb_connection_t* connection, xcb_window_t window, const PixelRect& place);

/// Lets the mouse through to what lies behind, where the server has shapes.
void dropInput(Connection& connection, xcb_window_t window);

} // namespace WindowServer
