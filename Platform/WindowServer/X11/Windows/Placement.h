// Where windows of ours stand on the screen, and what of them is seen and takes input.
#pragma once

#include "WindowServer/Displays.h"

#include <map>

#include <xcb/shape.h>
#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// The frame (points, y up) in the server's pixels (y down), by the display's scale.
PixelRect pixelsOf(const CGRect& frame, const Display& display);

/// Names the window, and the program with it, by WM_CLASS.
void setClass(xcb_connection_t* connection, xcb_window_t window, const std::string& instance);

/// Sends the window there, without a border.
void configure(xcb_connection_t* connection, xcb_window_t window, const PixelRect& place);

/// By kind: XCB_SHAPE_SK_INPUT. Of the other kinds the window has no shape of its own.
using Shapes = std::map<uint8_t, std::vector<PixelRect>>;
inline const Shapes noInput = {{XCB_SHAPE_SK_INPUT, {}}};

void setShape(xcb_connection_t* connection, xcb_window_t window, const Shapes::value_type& shape);

/// Lets the mouse through to what lies behind, where the server has shapes.
void dropInput(Connection& connection, xcb_window_t window);

/// How a window of ours is to be, whatever other programs do to it.
struct Kept {
    xcb_window_t window;
    xcb_window_t parent;
    PixelRect place; ///< Empty: anywhere.
    const Shapes& shapes;
};

/// Undoes what the event tells that others did to the window. True where they took it away: off
/// the screen, out of its parent, or for good.
bool mend(const Connection& connection, const Kept& kept, const xcb_generic_event_t& event);

} // namespace WindowServer
