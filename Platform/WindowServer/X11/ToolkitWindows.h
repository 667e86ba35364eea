// What the toolkit does not do to its own windows. It goes over the toolkit's connection, so that
// the server does it after it has made the window and before it destroys it.
#pragma once

#include "WindowServer/Session.h"

namespace WindowServer {

class Connection;

void setToolkitName(Connection& connection, ToolkitWindow window, const std::string& instance);
void setToolkitShape(Connection& connection, ToolkitWindow window, Session::Region region,
                     const std::vector<PixelRect>& rectangles);
void setToolkitShadowMargin(Connection& connection, ToolkitWindow window, int margin);
/// Gives the keyboard to the window, which the toolkit has mapped.
void focusToolkit(ToolkitWindow window);
/// Empty where the server refuses, or its pixels are of a kind not known here.
Snapshot grabAroundToolkit(Connection& connection, ToolkitWindow window, int margin);

} // namespace WindowServer
