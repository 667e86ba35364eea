// What the toolkit does not do to its own windows. It goes over the toolkit's connection, so that
// the server does it after it has made the window and before it destroys it.
#pragma once

#include "WindowServer/Session.h"

namespace WindowServer {

class Connection;

void setToolkitName(Connection& connection, ToolkitWindow window, const std::string& instance);
/// `kind` as the Shape extension numbers them, and to be called only where there is one.
void setToolkitShape(ToolkitWindow window, uint8_t kind, const std::vector<PixelRect>& rectangles);
/// Sends it there, in the server's pixels, without a border.
void setToolkitPlace(ToolkitWindow window, const PixelRect& place);
/// Waits until the server has the windows that the toolkit has made so far.
void settleToolkit();
void setToolkitShadowMargin(Connection& connection, ToolkitWindow window, int margin);
/// Gives the keyboard to the window, which the toolkit has mapped.
void focusToolkit(ToolkitWindow window);
/// Empty where the server refuses, or its pixels are of a kind not known here.
Snapshot grabAroundToolkit(Connection& connection, ToolkitWindow window, int margin);

} // namespace WindowServer
