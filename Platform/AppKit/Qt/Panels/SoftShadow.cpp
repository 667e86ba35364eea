#include "AppKit/Qt/Panels/SoftShadow.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// In points.
constexpr double deviation = 3.2;
constexpr double drop = 1.5;
constexpr double darkness = 0.4; ///< Where the shadow is deepest.

/// Blurs each row with a Gaussian and turns rows into columns, so that twice does all.
std::vector<float> blurredAcross(const std::vector<float>& from, int width, int height,
                                 double sigma) {
    const int reach = static_cast<int>(std::ceil(3 * sigma));
    std::vector<float> kernel;
    float sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        kernel.push_back(static_cast<float>(std::exp(-i * i / (2 * sigma * sigma))));
        sum += kernel.back();
    }
    std::vector<float> to(from.size());
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            float value = 0;
            for (int i = std::max(-reach, -x); i <= std::min(reach, width - 1 - x); ++i)
                value += from[static_cast<size_t>(y * width + x + i)] *
                         kernel[static_cast<size_t>(i + reach)];
            to[static_cast<size_t>(x * height + y)] = value / sum;
        }
    return to;
}

} // namespace

QImage withShadow(const QImage& picture, double margin, double scale) {
    const int border = static_cast<int>(std::lround(margin));
    const int width = picture.width() + 2 * border;
    const int height = picture.height() + 2 * border;
    QImage result(width, height, QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.drawImage(QPointF(border, border + drop * scale), picture);
    painter.end();

    std::vector<float> opacity;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            opacity.push_back(static_cast<float>(qAlpha(result.pixel(x, y))));
    opacity = blurredAcross(opacity, width, height, deviation * scale);
    opacity = blurredAcross(opacity, height, width, deviation * scale);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const float shade = opacity[static_cast<size_t>(y * width + x)];
            result.setPixel(x, y, qRgba(0, 0, 0, static_cast<int>(shade * darkness)));
        }

    // It lies around the picture, not under it.
    painter.begin(&result);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.drawImage(border, border, picture);
    painter.setCompositionMode(QPainter::CompositionMode_Plus);
    painter.drawImage(border, border, picture);
    return result;
}
