#include "AppKit/Qt/Panels/PanelPicture.h"

#include "AppKit/Qt/Drawing/Symbol.h"
#include "WindowServer/GaussianBlur.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>

using WindowServer::PixelRect;
using WindowServer::Snapshot;

namespace {

// Of the shadow, in points.
constexpr double shadowDeviation = 3.2;
constexpr double shadowDrop = 1.5;
constexpr double shadowDarkness = 0.4; ///< Where it is deepest.

} // namespace

QImage pictureOf(NSView& view, const NSSize& size, int margin, double scale) {
    const auto pixels = [scale](double points) {
        return static_cast<int>(std::lround(points * scale));
    };
    const int border = pixels(margin);
    const QSize inner(pixels(size.width), pixels(size.height));
    QImage picture(inner + 2 * QSize(border, border), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(border, border);
    painter.scale(inner.width() / size.width, inner.height() / size.height);
    painter.translate(0, size.height);
    painter.scale(1, -1);
    const QScopedValueRollback target(thePainter, &painter);
    view.drawRect(view.bounds());
    return picture;
}

std::vector<PixelRect> inkOf(const QImage& picture) {
    std::vector<PixelRect> ink;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            if (qAlpha(row[x]) == 0) continue;
            const int start = x;
            while (x < picture.width() && qAlpha(row[x]) != 0)
                ++x;
            ink.push_back({start, y, x - start, 1});
        }
    }
    return ink;
}

QImage withShadow(const QImage& picture, double scale) {
    QImage result(picture.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.drawImage(QPointF(0, shadowDrop * scale), picture);
    painter.end();

    WindowServer::SmallImage opacity(result.width(), result.height());
    for (int y = 0; y < result.height(); ++y)
        for (int x = 0; x < result.width(); ++x)
            opacity.row(y)[4 * x] = static_cast<float>(qAlpha(result.pixel(x, y)));
    WindowServer::GaussianBlur(shadowDeviation * scale).apply(opacity);
    for (int y = 0; y < result.height(); ++y)
        for (int x = 0; x < result.width(); ++x) {
            const float shade = opacity.row(y)[4 * x];
            result.setPixel(x, y, qRgba(0, 0, 0, static_cast<int>(shade * shadowDarkness)));
        }

    painter.begin(&result);
    painter.drawImage(0, 0, picture);
    return result;
}

QImage estimateBehind(const QImage& picture, const Snapshot& surroundings, const QRegion& hidden) {
    const auto [left, top, width, height] = surroundings.area;
    WindowServer::SmallImage colours(width, height);
    bool isAnyKnown = false;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const QPoint place(left + x, top + y);
            const bool isInk = picture.valid(place) && qAlpha(picture.pixel(place)) > 0;
            if (isInk || hidden.contains(place)) continue;
            const QRgb colour = surroundings.pixels[static_cast<size_t>(y) * width + x];
            float* const known = colours.row(y) + 4 * x;
            for (int i = 0; i < 3; ++i)
                known[i] = static_cast<float>(colour >> 8 * i & 0xff);
            known[3] = 1;
            isAnyKnown = true;
        }
    if (!isAnyKnown) return {};
    // The last channel, blurred with the others, is how much of the mean is known.
    constexpr double share = 1.0 / 6;
    WindowServer::GaussianBlur(width * share).apply(colours);
    QImage behind(picture.size(), QImage::Format_RGB32);
    behind.fill(Qt::black);
    for (int y = 0; y < behind.height(); ++y)
        for (int x = 0; x < behind.width(); ++x) {
            const float* const sum = colours.row(std::clamp(y - top, 0, height - 1)) +
                                     4 * std::clamp(x - left, 0, width - 1);
            const auto mean = [sum](int i) {
                return static_cast<int>(std::lround(sum[i] / sum[3]));
            };
            if (sum[3] > 0) behind.setPixel(x, y, qRgb(mean(2), mean(1), mean(0)));
        }
    return behind;
}
