#pragma once

#include "WindowServer/GaussianBlur.h"
#include "WindowServer/PixelRect.h"

namespace WindowServer {

class Connection;

/// Takes a picture of `area`, in root pixels, as it looks now, reduced by `factor`, with nothing
/// but the core protocol. False where the server refuses or its pixels are of a kind not known
/// here.
bool grabScreen(Connection& connection, const PixelRect& area, int factor, SmallImage& image);

} // namespace WindowServer
