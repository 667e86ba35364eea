#include "WindowServer/Wayland/Blur/StillPicture.h"

#include <algorithm>
#include <cmath>

namespace WindowServer::Wayland {

namespace {

/// Compositors may stretch by the nearest pixel: enlarged so much beforehand, that shows nowhere.
constexpr int enlargement = 4;

constexpr float leastWeight = 1e-3F;

/// Reduced by averages of blocks. The fourth channel is how much of a block counts.
SmallImage reduced(const QImage& image, const QRegion& left, int factor) {
    SmallImage small((image.width() + factor - 1) / factor, (image.height() + factor - 1) / factor);
    QImage counts(image.size(), QImage::Format_Grayscale8);
    counts.fill(1);
    for (const QRect& each : left& image.rect())
        for (int y = each.top(); y <= each.bottom(); ++y)
            std::fill_n(counts.scanLine(y) + each.x(), each.width(), 0);
    for (int y = 0; y < image.height(); ++y) {
        const auto* const pixels = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        const uchar* const counted = counts.constScanLine(y);
        float* const row = small.row(y / factor);
        for (int x = 0; x < image.width(); ++x) {
            if (!counted[x]) continue;
            float* const sum = row + static_cast<ptrdiff_t>(x / factor) * 4;
            sum[0] += static_cast<float>(qBlue(pixels[x]));
            sum[1] += static_cast<float>(qGreen(pixels[x]));
            sum[2] += static_cast<float>(qRed(pixels[x]));
            sum[3] += 1;
        }
    }
    // Blocks at the edges hold fewer pixels, and count as much.
    for (int y = 0; y < small.height; ++y)
        for (int x = 0; x < small.width; ++x) {
            const int wide = std::min(factor, image.width() - x * factor);
            const int high = std::min(factor, image.height() - y * factor);
            for (int channel = 0; channel < 4; ++channel)
                small.row(y)[x * 4 + channel] /= static_cast<float>(wide * high);
        }
    return small;
}

} // namespace

StillPicture::StillPicture(const QImage& output, const QRegion& ours, double deviation) {
    const BlurPlan plan = BlurPlan::forDeviation(deviation);
    m_blurred = reduced(output, ours, plan.factor());
    GaussianBlur(plan.deviation).apply(m_blurred);
}

QImage StillPicture::under(const CGColor& overlay) const {
    const float keep = static_cast<float>(1 - overlay.alpha);
    const float add[3] = {static_cast<float>(overlay.blue * overlay.alpha * 255),
                          static_cast<float>(overlay.green * overlay.alpha * 255),
                          static_cast<float>(overlay.red * overlay.alpha * 255)};
    QImage small(m_blurred.width, m_blurred.height, QImage::Format_RGB32);
    for (int y = 0; y < small.height(); ++y)
        for (int x = 0; x < small.width(); ++x) {
            const float* const from = m_blurred.row(y) + static_cast<ptrdiff_t>(x) * 4;
            const float weight = std::max(from[3], leastWeight);
            const auto part = [&](int channel) {
                return static_cast<int>(
                    std::lround(std::min(from[channel] / weight * keep + add[channel], 255.0F)));
            };
            small.setPixel(x, y, qRgb(part(2), part(1), part(0)));
        }
    return small.scaled(small.size() * enlargement, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace WindowServer::Wayland
