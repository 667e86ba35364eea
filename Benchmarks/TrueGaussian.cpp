#include "TrueGaussian.h"

#include <cmath>

namespace Benchmarks {

namespace {

/// What lies farther out weighs less than a millionth.
constexpr double reachInDeviations = 5;

std::vector<double> kernelOf(double deviation) {
    const int reach = static_cast<int>(std::ceil(deviation * reachInDeviations));
    std::vector<double> kernel;
    double sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        kernel.push_back(std::exp(-i * i / (2 * deviation * deviation)));
        sum += kernel.back();
    }
    for (double& weight : kernel)
        weight /= sum;
    return kernel;
}

/// Blurs along the rows and turns the picture on its side.
Plane blurredAndTurned(const Plane& from, const std::vector<double>& kernel) {
    const auto width = static_cast<size_t>(from.width);
    const auto height = static_cast<size_t>(from.height);
    const size_t reach = kernel.size() / 2;
    Plane to{from.height, from.width, std::vector<double>(from.values.size())};
    std::vector<double> padded(width + 2 * reach);
    std::vector<double> sums(width);
    for (size_t y = 0; y < height; ++y) {
        const double* const row = from.values.data() + y * width;
        for (size_t x = 0; x < padded.size(); ++x)
            padded[x] = row[x < reach ? 0 : std::min(x - reach, width - 1)];
        sums.assign(width, 0);
        for (size_t i = 0; i < kernel.size(); ++i)
            for (size_t x = 0; x < width; ++x)
                sums[x] += kernel[i] * padded[x + i];
        for (size_t x = 0; x < width; ++x)
            to.values[x * height + y] = sums[x];
    }
    return to;
}

} // namespace

Plane trueGaussian(const Plane& plane, double deviation) {
    const std::vector<double> kernel = kernelOf(deviation);
    return blurredAndTurned(blurredAndTurned(plane, kernel), kernel);
}

} // namespace Benchmarks
