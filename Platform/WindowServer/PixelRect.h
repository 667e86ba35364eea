#pragma once

namespace WindowServer {

/// A rectangle in device pixels, y down, as the window server counts them.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const PixelRect&) const = default;
};

} // namespace WindowServer
