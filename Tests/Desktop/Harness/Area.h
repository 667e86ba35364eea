#pragma once

#include <algorithm>
#include <ostream>

namespace Harness {

struct Point {
    int x = 0;
    int y = 0;
};

/// A rectangle in device pixels, y down.
struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int right() const { return x + width; }
    int bottom() const { return y + height; }
    Point middle() const { return {x + width / 2, y + height / 2}; }
    Area grown(int by) const { return {x - by, y - by, width + 2 * by, height + 2 * by}; }
    bool contains(const Area& inner) const {
        return inner.x >= x && inner.y >= y && inner.right() <= right() &&
               inner.bottom() <= bottom();
    }
    Area joined(const Area& other) const { ///< The smallest around both.
        if (width == 0) return other;
        const int l = std::min(x, other.x), t = std::min(y, other.y);
        return {l, t, std::max(right(), other.right()) - l, std::max(bottom(), other.bottom()) - t};
    }
    bool operator==(const Area&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Area& area) {
    return out << area.width << "x" << area.height << "+" << area.x << "+" << area.y;
}

} // namespace Harness
