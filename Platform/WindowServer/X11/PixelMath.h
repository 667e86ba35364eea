// Arithmetic on pixel rectangles.
#pragma once

#include "WindowServer/PixelRect.h"

#include <algorithm>

#include <xcb/xcb.h>

namespace WindowServer {

/// As large as a screen can be: the size that a connection knows is the one that it began with.
inline constexpr PixelRect everywhere{0, 0, 32767, 32767};

inline bool isEmpty(const PixelRect& r) { return r.width <= 0 || r.height <= 0; }

inline PixelRect intersection(const PixelRect& a, const PixelRect& b) {
    const int x = std::max(a.x, b.x);
    const int y = std::max(a.y, b.y);
    return {x, y, std::min(a.x + a.width, b.x + b.width) - x,
            std::min(a.y + a.height, b.y + b.height) - y};
}

/// The smallest rectangle around both.
inline PixelRect united(const PixelRect& a, const PixelRect& b) {
    if (isEmpty(a)) return b;
    if (isEmpty(b)) return a;
    const int x = std::min(a.x, b.x);
    const int y = std::min(a.y, b.y);
    return {x, y, std::max(a.x + a.width, b.x + b.width) - x,
            std::max(a.y + a.height, b.y + b.height) - y};
}

inline bool contains(const PixelRect& outer, const PixelRect& inner) {
    return outer.x <= inner.x && outer.y <= inner.y &&
           outer.x + outer.width >= inner.x + inner.width &&
           outer.y + outer.height >= inner.y + inner.height;
}

inline PixelRect translated(const PixelRect& r, int dx, int dy) {
    return {r.x + dx, r.y + dy, r.width, r.height};
}

inline int floorDiv(int value, int divisor) {
    return value >= 0 ? value / divisor : -((-value + divisor - 1) / divisor);
}

inline int ceilDiv(int value, int divisor) { return -floorDiv(-value, divisor); }

/// The rectangle in a picture `factor` times smaller, grown to whole pixels.
inline PixelRect reduced(const PixelRect& r, int factor) {
    const int x = floorDiv(r.x, factor);
    const int y = floorDiv(r.y, factor);
    return {x, y, ceilDiv(r.x + r.width, factor) - x, ceilDiv(r.y + r.height, factor) - y};
}

inline PixelRect enlarged(const PixelRect& r, int factor) {
    return {r.x * factor, r.y * factor, r.width * factor, r.height * factor};
}

inline PixelRect grown(const PixelRect& r, int by) {
    return {r.x - by, r.y - by, r.width + 2 * by, r.height + 2 * by};
}

inline PixelRect sized(int width, int height) { return {0, 0, width, height}; }

inline PixelRect fromX(const xcb_rectangle_t& r) { return {r.x, r.y, r.width, r.height}; }

inline xcb_rectangle_t toX(const PixelRect& r) {
    return {static_cast<int16_t>(r.x), static_cast<int16_t>(r.y), static_cast<uint16_t>(r.width),
            static_cast<uint16_t>(r.height)};
}

} // namespace WindowServer
