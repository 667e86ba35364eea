#include "WindowServer/X11/Blur/Backdrop.h"

#include "WindowServer/X11/PixelMath.h"

#include <algorithm>
#include <utility>

namespace WindowServer {

Backdrop::Backdrop(Connection& connection, int width, int height, double deviation)
    : m_width(width), m_height(height), m_plan(BlurPlan::forDeviation(deviation)),
      m_blur(m_plan.deviation),
      m_source(ceilDiv(width, m_plan.factor()), ceilDiv(height, m_plan.factor())),
      m_changed(sized(m_source.width, m_source.height)), m_shown{m_source.width,
                                                                 m_source.height,
                                                                 {}},
      m_enlarger(Enlarger::make(connection, m_plan.factor(), m_source.width, m_source.height)) {}

PixelRect Backdrop::develop(const CGColor& overlay) {
    const PixelRect blurred = m_blur.take(m_source, std::exchange(m_changed, {}));
    const PixelRect part = store(overlay, blurred);
    if (isEmpty(part)) return {};
    m_enlarger->upload(m_shown, part);
    // Interpolation carries each small pixel half a pixel beyond its own square.
    return intersection(enlarged(grown(part, 1), m_plan.factor()), sized(m_width, m_height));
}

void Backdrop::sourceChanged(const PixelRect& part) { m_changed = united(m_changed, part); }

/// Gives the part of what was blurred, in small pixels, that came to differ.
PixelRect Backdrop::store(const CGColor& overlay, const PixelRect& blurred) {
    const float keep = static_cast<float>(1 - overlay.alpha);
    const float add[3] = {static_cast<float>(overlay.blue * overlay.alpha * 255 + 0.5),
                          static_cast<float>(overlay.green * overlay.alpha * 255 + 0.5),
                          static_cast<float>(overlay.red * overlay.alpha * 255 + 0.5)};
    const bool first = m_shown.values.empty();
    m_shown.values.resize(static_cast<size_t>(m_shown.width) * m_shown.height);
    std::vector<float> row(static_cast<size_t>(blurred.width) * 4);
    PixelRect part;
    for (int y = blurred.y; y < blurred.y + blurred.height; ++y) {
        uint32_t* shown =
            m_shown.values.data() + static_cast<ptrdiff_t>(y) * m_shown.width + blurred.x;
        m_blur.blurInto(row.data(), y, blurred);
        const float* from = row.data();
        for (int x = blurred.x; x < blurred.x + blurred.width; ++x, from += 4, ++shown) {
            uint32_t pixel = 0;
            for (int channel = 0; channel < 3; ++channel)
                pixel |= static_cast<uint32_t>(from[channel] * keep + add[channel]) << 8 * channel;
            if (pixel == *shown && !first) continue;
            *shown = pixel;
            part = united(part, {x, y, 1, 1});
        }
    }
    return part;
}

uint32_t Backdrop::meanPixel() const {
    uint64_t sums[3] = {};
    for (const uint32_t pixel : m_shown.values)
        for (int channel = 0; channel < 3; ++channel)
            sums[channel] += pixel >> 8 * channel & 255;
    const uint64_t count = std::max<uint64_t>(m_shown.values.size(), 1);
    return static_cast<uint32_t>(sums[2] / count << 16 | sums[1] / count << 8 | sums[0] / count);
}

SmallImage resized(const SmallImage& image, int width, int height) {
    SmallImage result(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            std::copy_n(image.row(y * image.height / height) +
                            static_cast<ptrdiff_t>(x * image.width / width) * 4,
                        4, result.row(y) + static_cast<ptrdiff_t>(x) * 4);
    return result;
}

} // namespace WindowServer
