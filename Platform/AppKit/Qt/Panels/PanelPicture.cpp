#include "AppKit/Qt/Panels/PanelPicture.h"

#include "AppKit/Qt/Drawing/NSGraphicsContext.h"
#include "WindowServer/GaussianBlur.h"

#include <algorithm>
#include <cmath>

using WindowServer::PixelRect;
using WindowServer::Snapshot;

namespace {

// Of the shadow, in points.
constexpr double shadowDeviation = 3.2;
constexpr double shadowDrop = 1.5;
constexpr double shadowDarkness = 0.4; ///< Where it is deepest.

struct Sample {
    int x;
    int y;
    QRgb colour;
};

/// So many samples give the same estimate as all of them.
constexpr size_t enoughSamples = 160;

/// The estimates are smooth: one for so many pixels each way is enough.
constexpr int coarseness = 4;

/// The pixels just outside of the ink.
std::vector<Sample> samplesAround(const QImage& picture, const Snapshot& surroundings,
                                  const QRegion& hidden) {
    const PixelRect& area = surroundings.area;
    // What lies beyond the picture is clear in the copy, which has a pixel more on each side.
    const QImage ink = picture.copy(area.x - 1, area.y - 1, area.width + 2, area.height + 2)
                           .convertToFormat(QImage::Format_Alpha8);
    const auto isInk = [bits = ink.constBits(), stride = ink.bytesPerLine()](int x, int y) {
        return bits[y * stride + x] != 0;
    };
    const auto touchesInk = [&](int row, int column) {
        for (int y = row; y < row + 3; ++y)
            if (isInk(column, y) || isInk(column + 1, y) || isInk(column + 2, y)) return true;
        return false;
    };
    std::vector<Sample> samples;
    for (int row = 0; row < area.height; ++row)
        for (int column = 0; column < area.width; ++column)
            if (touchesInk(row, column) && !isInk(column + 1, row + 1) &&
                !hidden.contains({area.x + column, area.y + row}))
                samples.push_back(
                    {area.x + column, area.y + row,
                     surroundings.pixels[static_cast<size_t>(row) * area.width + column]});
    return samples;
}

std::vector<Sample> thinned(const std::vector<Sample>& samples) {
    const size_t step = samples.size() / enoughSamples + 1;
    std::vector<Sample> some;
    for (size_t i = 0; i < samples.size(); i += step)
        some.push_back(samples[i]);
    return some;
}

/// The samples' mean, those nearby counting most.
QRgb estimateAt(int x, int y, const std::vector<Sample>& samples) {
    float red = 0;
    float green = 0;
    float blue = 0;
    float sum = 0;
    for (const Sample& sample : samples) {
        const auto square = static_cast<float>(
            std::max(1, (x - sample.x) * (x - sample.x) + (y - sample.y) * (y - sample.y)));
        const float weight = 1 / (square * std::sqrt(square));
        red += weight * static_cast<float>(qRed(sample.colour));
        green += weight * static_cast<float>(qGreen(sample.colour));
        blue += weight * static_cast<float>(qBlue(sample.colour));
        sum += weight;
    }
    const auto mean = [sum](float value) { return static_cast<int>(std::lround(value / sum)); };
    return qRgb(mean(red), mean(green), mean(blue));
}

} // namespace

QImage pictureOf(NSView& view, const NSSize& size, double scale) {
    const auto pixels = [scale](double points) {
        return static_cast<int>(std::lround(points * scale));
    };
    QImage picture(pixels(size.width), pixels(size.height), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(picture.width() / size.width, picture.height() / size.height);
    if (!view.isFlipped()) {
        painter.translate(0, size.height);
        painter.scale(1, -1);
    }
    const NSGraphicsContext context(painter);
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
    const int border = static_cast<int>(std::lround(softShadowMargin * scale));
    QImage result(picture.size() + 2 * QSize(border, border), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.drawImage(QPointF(border, border + shadowDrop * scale), picture);
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

    // The shadow lies around the picture, not under it.
    painter.begin(&result);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.drawImage(border, border, picture);
    painter.setCompositionMode(QPainter::CompositionMode_Plus);
    painter.drawImage(border, border, picture);
    return result;
}

QImage estimateBehind(const QImage& picture, const Snapshot& surroundings, const QRegion& hidden) {
    const auto samples = thinned(samplesAround(picture, surroundings, hidden));
    if (samples.empty()) return {};
    QImage estimates((picture.width() + coarseness - 1) / coarseness,
                     (picture.height() + coarseness - 1) / coarseness, QImage::Format_RGB32);
    for (int y = 0; y < estimates.height(); ++y)
        for (int x = 0; x < estimates.width(); ++x)
            estimates.setPixel(x, y,
                               estimateAt(x * coarseness + coarseness / 2,
                                          y * coarseness + coarseness / 2, samples));
    return estimates.scaled(picture.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}
