// The split of a wide Gaussian, halved, blurred small and enlarged, against the Gaussian itself.
#include "WindowServer/X11/GaussianBlur.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

using WindowServer::BlurPlan;
using WindowServer::GaussianBlur;
using WindowServer::SmallImage;

namespace {

struct Picture {
    int width;
    int height;
    std::vector<double> values;

    Picture(int w, int h) : width(w), height(h), values(static_cast<size_t>(w) * h) {}
    double& at(int x, int y) { return values[static_cast<size_t>(y) * width + x]; }
    /// Edge pixels go on for ever.
    double atClamped(int x, int y) const {
        return values[static_cast<size_t>(std::clamp(y, 0, height - 1)) * width +
                      std::clamp(x, 0, width - 1)];
    }
};

Picture trueGaussian(const Picture& from, double deviation) {
    const int reach = static_cast<int>(4 * deviation);
    std::vector<double> kernel;
    double sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        kernel.push_back(std::exp(-i * i / (2 * deviation * deviation)));
        sum += kernel.back();
    }
    const auto pass = [&](const Picture& image, int dx, int dy) {
        Picture out(image.width, image.height);
        for (int y = 0; y < image.height; ++y)
            for (int x = 0; x < image.width; ++x)
                for (int i = -reach; i <= reach; ++i)
                    out.at(x, y) +=
                        kernel[i + reach] / sum * image.atClamped(x + i * dx, y + i * dy);
        return out;
    };
    return pass(pass(from, 1, 0), 0, 1);
}

Picture splitGaussian(const Picture& from, double deviation) {
    const BlurPlan plan = BlurPlan::forDeviation(deviation);
    const int factor = plan.factor();
    SmallImage image((from.width + factor - 1) / factor, (from.height + factor - 1) / factor);
    for (int y = 0; y < image.height * factor; ++y)
        for (int x = 0; x < image.width * factor; ++x)
            image.row(y / factor)[x / factor * 4] +=
                static_cast<float>(from.atClamped(x, y) / (factor * factor));
    GaussianBlur(plan.deviation).apply(image);
    Picture small(image.width, image.height);
    for (int y = 0; y < small.height; ++y)
        for (int x = 0; x < small.width; ++x)
            small.at(x, y) = image.row(y)[x * 4];
    Picture out(from.width, from.height);
    for (int y = 0; y < out.height; ++y)
        for (int x = 0; x < out.width; ++x) {
            const double column = (x + 0.5) / factor - 0.5;
            const double row = (y + 0.5) / factor - 0.5;
            const int left = static_cast<int>(std::floor(column));
            const int top = static_cast<int>(std::floor(row));
            const double h = column - left;
            const double v = row - top;
            out.at(x, y) = (1 - v) * ((1 - h) * small.atClamped(left, top) +
                                      h * small.atClamped(left + 1, top)) +
                           v * ((1 - h) * small.atClamped(left, top + 1) +
                                h * small.atClamped(left + 1, top + 1));
        }
    return out;
}

double peakSignalToNoise(const Picture& a, const Picture& b) {
    double squares = 0;
    for (size_t i = 0; i < a.values.size(); ++i)
        squares += (a.values[i] - b.values[i]) * (a.values[i] - b.values[i]);
    return 10 * std::log10(255 * 255 / (squares / static_cast<double>(a.values.size())));
}

Picture blocks(int width, int height, int size) {
    Picture picture(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            picture.at(x, y) = (x / size + y / size) % 2 * 255;
    return picture;
}

Picture noise(int width, int height) {
    Picture picture(width, height);
    std::mt19937 random(1);
    for (double& value : picture.values)
        value = random() % 256;
    return picture;
}

Picture edge(int width, int height) {
    Picture picture(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            picture.at(x, y) = x < width / 3 ? 255 : 0;
    return picture;
}

} // namespace

TEST(GaussianBlur, ComesCloseToATrueGaussian) {
    for (const double deviation : {21.0, 84.0}) {
        for (const Picture& picture :
             {blocks(640, 360, 1), blocks(640, 360, 64), noise(640, 360), edge(640, 360)}) {
            const double decibels = peakSignalToNoise(splitGaussian(picture, deviation),
                                                      trueGaussian(picture, deviation));
            EXPECT_GE(decibels, 40) << "deviation " << deviation;
        }
    }
}

TEST(GaussianBlur, KeepsTheSmallDeviationBoundedAtEveryScale) {
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const BlurPlan plan = BlurPlan::forDeviation(84 * scale);
        EXPECT_GE(plan.deviation, 4) << scale;
        EXPECT_LT(plan.deviation, 9) << scale;
    }
}

TEST(GaussianBlur, LeavesAPlainPictureAsItIs) {
    SmallImage image(7, 3);
    std::ranges::fill(image.values, 93.0f);
    GaussianBlur(5).apply(image);
    for (const float value : image.values)
        EXPECT_NEAR(value, 93, 0.01);
}
