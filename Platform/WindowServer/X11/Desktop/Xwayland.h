#pragma once

namespace WindowServer {

class Connection;

/// Whether the server only serves the X11 windows of a Wayland session. A window there swallows the
/// clicks that are meant for Wayland's own windows below, whatever it asks for, and those are not
/// seen by it.
bool isXwayland(const Connection& connection);

} // namespace WindowServer
