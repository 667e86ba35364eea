#include "Harness/Picture.h"

#include <algorithm>
#include <cstdlib>

namespace Harness {

namespace {

int luminanceOf(uint32_t pixel) {
    const uint32_t red = pixel >> 16 & 0xFF;
    const uint32_t green = pixel >> 8 & 0xFF;
    const uint32_t blue = pixel & 0xFF;
    return static_cast<int>((red * 54 + green * 183 + blue * 19) / 256);
}

} // namespace

Picture::Picture(Area area, std::vector<uint32_t> pixels)
    : m_area(area), m_pixels(std::move(pixels)) {
    // The unused byte of a 24-bit screen's pixels is anything.
    for (uint32_t& pixel : m_pixels)
        pixel &= 0xFFFFFF;
}

uint32_t Picture::at(int x, int y) const {
    return m_pixels.at(static_cast<size_t>((y - m_area.y) * m_area.width + x - m_area.x));
}

int Picture::luminance(int x, int y) const { return luminanceOf(at(x, y)); }

Picture Picture::cut(const Area& area) const {
    std::vector<uint32_t> pixels;
    for (int y = area.y; y < area.bottom(); ++y)
        for (int x = area.x; x < area.right(); ++x)
            pixels.push_back(at(x, y));
    return {area, std::move(pixels)};
}

void Picture::erase(const Area& area) {
    for (int y = std::max(area.y, m_area.y); y < std::min(area.bottom(), m_area.bottom()); ++y)
        for (int x = std::max(area.x, m_area.x + 1); x < std::min(area.right(), m_area.right());
             ++x)
            m_pixels[static_cast<size_t>((y - m_area.y) * m_area.width + x - m_area.x)] =
                at(x - 1, y);
}

double Picture::mean() const {
    double sum = 0;
    for (uint32_t pixel : m_pixels)
        sum += luminanceOf(pixel);
    return sum / static_cast<double>(m_pixels.size());
}

int Picture::brightest() const {
    int result = 0;
    for (uint32_t pixel : m_pixels)
        result = std::max(result, luminanceOf(pixel));
    return result;
}

int Picture::sharpestStep() const {
    int result = 0;
    for (int y = m_area.y; y < m_area.bottom(); ++y)
        for (int x = m_area.x; x < m_area.right(); ++x) {
            const int here = luminance(x, y);
            if (x > m_area.x) result = std::max(result, std::abs(here - luminance(x - 1, y)));
            if (y > m_area.y) result = std::max(result, std::abs(here - luminance(x, y - 1)));
        }
    return result;
}

size_t Picture::count(uint32_t colour) const {
    return static_cast<size_t>(std::count(m_pixels.begin(), m_pixels.end(), colour));
}

} // namespace Harness
