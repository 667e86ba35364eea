#pragma once

#include <ostream>

namespace Harness {

/// A rectangle in device pixels, y down.
struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int right() const { return x + width; }
    int bottom() const { return y + height; }
    bool operator==(const Area&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Area& area) {
    return out << area.width << "x" << area.height << "+" << area.x << "+" << area.y;
}

} // namespace Harness
