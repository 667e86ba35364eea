#include "Harness/Picture.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace Harness {

namespace {

int luminanceOf(uint32_t pixel) {
    const uint32_t red = pixel >> 16 & 0xFF;
    const uint32_t green = pixel >> 8 & 0xFF;
    const uint32_t blue = pixel & 0xFF;
    return static_cast<int>((red * 54 + green * 183 + blue * 19) / 256);
}

} // namespace

Picture::Picture(const Area& area, const QImage& image) : m_area(area) {
    const QImage plain = image.convertToFormat(QImage::Format_RGB32);
    m_pixels.resize(static_cast<size_t>(area.width) * static_cast<size_t>(area.height));
    std::memcpy(m_pixels.data(), plain.constBits(), m_pixels.size() * sizeof(uint32_t));
    for (uint32_t& pixel : m_pixels)
        pixel &= 0xFFFFFF; // The other byte is anything.
}

QImage Picture::image() const {
    return QImage(reinterpret_cast<const uchar*>(m_pixels.data()), m_area.width, m_area.height,
                  QImage::Format_RGB32)
        .copy();
}

int Picture::luminance(int x, int y) const { return luminanceOf(at(x, y)); }

Picture Picture::cut(const Area& area) const {
    return {area, image().copy(area.x - m_area.x, area.y - m_area.y, area.width, area.height)};
}

void Picture::erase(const Area& area) {
    for (int y = std::max(area.y, m_area.y); y < std::min(area.bottom(), m_area.bottom()); ++y)
        for (int x = std::max(area.x, m_area.x + 1); x < std::min(area.right(), m_area.right());
             ++x)
            m_pixels[indexOf(x, y)] = at(x - 1, y);
}

double Picture::mean() const {
    double sum = 0;
    for (const uint32_t pixel : m_pixels)
        sum += luminanceOf(pixel);
    return sum / static_cast<double>(m_pixels.size());
}

int Picture::brightest() const {
    return luminanceOf(*std::ranges::max_element(m_pixels, {}, luminanceOf));
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
    return static_cast<size_t>(std::ranges::count(m_pixels, colour));
}

} // namespace Harness
