#pragma once

#include "Harness/Area.h"

#include <QImage>

#include <cstdint>
#include <vector>

namespace Harness {

/// What stands on a piece of the screen: opaque pixels, 0xRRGGBB.
class Picture {
public:
    Picture(const Area& area, const QImage& image);

    const Area& area() const { return m_area; }
    const std::vector<uint32_t>& pixels() const { return m_pixels; } ///< Line by line.
    QImage image() const;

    /// The pixel at these coordinates of the screen.
    uint32_t at(int x, int y) const { return m_pixels.at(indexOf(x, y)); }
    int luminance(int x, int y) const; ///< 0 to 255

    Picture cut(const Area& area) const;
    void erase(const Area& area); ///< Spreads the pixels left of the area over it.

    double mean() const;                 ///< The mean luminance, 0 to 255.
    int brightest() const;               ///< The greatest luminance.
    int sharpestStep() const;            ///< The greatest step in luminance between neighbours.
    size_t count(uint32_t colour) const; ///< How many pixels have just this colour.
    bool isAll(uint32_t colour) const { return count(colour) == m_pixels.size(); }
    bool operator==(const Picture&) const = default;

private:
    size_t indexOf(int x, int y) const {
        return static_cast<size_t>((y - m_area.y) * m_area.width + x - m_area.x);
    }

    Area m_area;
    std::vector<uint32_t> m_pixels;
};

} // namespace Harness
