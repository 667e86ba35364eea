#include "AppKit/PanelPicture+Private.h"

#include <cmath>
#include <vector>

using WindowServer::PixelRect;
using WindowServer::Snapshot;

namespace {

struct Sample {
    int x;
    int y;
    QRgb colour;
};

/// So many say as much about a panel's inside as all of its rim.
constexpr size_t enoughSamples = 160;

/// The pixels just outside of the ink.
std::vector<Sample> samplesAround(const QImage& picture, const Snapshot& surroundings) {
    const auto isInk = [&](int x, int y) {
        return picture.valid(x, y) && qAlpha(picture.pixel(x, y)) != 0;
    };
    const auto touchesInk = [&](int x, int y) {
        for (int dy = -1; dy <= 1; ++dy)
            for (int dx = -1; dx <= 1; ++dx)
                if (isInk(x + dx, y + dy)) return true;
        return false;
    };
    const PixelRect& area = surroundings.area;
    std::vector<Sample> samples;
    for (int row = 0; row < area.height; ++row)
        for (int column = 0; column < area.width; ++column) {
            const int x = area.x + column;
            const int y = area.y + row;
            if (isInk(x, y) || !touchesInk(x, y)) continue;
            samples.push_back(
                {x, y, surroundings.pixels[static_cast<size_t>(row * area.width + column)]});
        }
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
        const auto square =
            static_cast<float>((x - sample.x) * (x - sample.x) + (y - sample.y) * (y - sample.y));
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

QImage estimateBehind(const QImage& picture, const Snapshot& surroundings) {
    const auto samples = thinned(samplesAround(picture, surroundings));
    if (samples.empty()) return {};
    QImage behind(picture.size(), QImage::Format_RGB32);
    behind.fill(Qt::black);
    for (const PixelRect& run : inkOf(picture))
        for (int x = run.x; x < run.x + run.width; ++x)
            behind.setPixel(x, run.y, estimateAt(x, run.y, samples));
    return behind;
}
