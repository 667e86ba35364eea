#pragma once

#include "WindowServer/PixelRect.h"
#include "WindowServer/X11/Blur/Canvas.h"

#include <cstdint>
#include <memory>
#include <vector>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// A small picture as the server takes it: 32 bits a pixel, blue in the lowest byte.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> values;
};

/// Paints a small picture at many times its size, smoothly interpolated.
class Enlarger {
public:
    virtual ~Enlarger() = default;

    /// Takes over the rows that cover `part`, in small pixels, of the picture.
    virtual void upload(const Pixels& small, const PixelRect& part) = 0;

    /// Paints `area`, in the large picture's pixels.
    virtual void paint(const Canvas& canvas, const PixelRect& area) = 0;

    /// One that scales inside the server where Render is there, and else in this process. `factor`
    /// is how many of the large picture's pixels one small pixel covers.
    static std::unique_ptr<Enlarger> make(Connection& connection, int factor, int smallWidth,
                                          int smallHeight);
};

} // namespace WindowServer
