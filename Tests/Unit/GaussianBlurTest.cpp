// The split of a wide Gaussian, halved, blurred small and enlarged, against the Gaussian itself.
#include "WindowServer/GaussianBlur.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

using WindowServer::BlurPlan;
using WindowServer::GaussianBlur;
using WindowServer::PixelRect;
using WindowServer::SmallImage;

namespace {

/// A line of pixels, white up to the edge, as the split blurs it: a row, or a column.
std::vector<double> blurredEdge(int length, int edge, double deviation, bool isColumn) {
    const BlurPlan plan = BlurPlan::forDeviation(deviation);
    EXPECT_LT(plan.deviation, 9) << "or it takes too long";
    const int factor = plan.factor();
    const int cells = length / factor;
    SmallImage image(isColumn ? 1 : cells, isColumn ? cells : 1);
    for (int i = 0; i < edge; ++i)
        image.values[i / factor * 4] += 255.0f / static_cast<float>(factor);
    GaussianBlur(plan.deviation).apply(image);
    std::vector<double> line;
    for (int i = 0; i < length; ++i) {
        const double at = std::clamp((i + 0.5) / factor - 0.5, 0.0, cells - 1.0);
        const int before = std::min(static_cast<int>(at), cells - 2);
        line.push_back(
            std::lerp(image.values[before * 4], image.values[before * 4 + 4], at - before));
    }
    return line;
}

} // namespace

TEST(GaussianBlur, SpreadsAnEdgeAsATrueGaussianDoes) {
    for (const double deviation : {21.0, 84.0, 168.0})
        for (const int edge : {1024, 1030}) // On the edge of a cell, and within one.
            for (const bool isColumn : {false, true}) {
                const auto line = blurredEdge(2048, edge, deviation, isColumn);
                double worst = 0;
                for (int i = 0; i < 2048; ++i) {
                    const double deviations = (i + 0.5 - edge) / deviation;
                    const double expected = 255 * std::erfc(deviations / std::numbers::sqrt2) / 2;
                    worst = std::max(worst, std::abs(line[i] - expected));
                }
                EXPECT_LT(worst, 0.5) << deviation << (isColumn ? " down" : " across");
            }
}

TEST(GaussianBlur, BringsAPictureUpToDateWithAPartThatChanged) {
    SmallImage image(40, 30);
    for (size_t i = 0; i < image.values.size(); ++i)
        image.values[i] = static_cast<float>(i * 37 % 256);
    GaussianBlur blur(2);
    SmallImage blurred = image;
    blur.update(image, {0, 0, 40, 30}, blurred);
    for (const PixelRect& part : {PixelRect{17, 11, 3, 4}, PixelRect{0, 29, 40, 1}}) {
        for (int y = part.y; y < part.y + part.height; ++y)
            std::fill_n(image.row(y) + part.x * 4, part.width * 4, 255.0f);
        blur.update(image, part, blurred);
        SmallImage whole = image;
        GaussianBlur(2).apply(whole);
        EXPECT_EQ(blurred.values, whole.values) << part.y;
    }
}
