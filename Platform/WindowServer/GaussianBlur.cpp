#include "WindowServer/GaussianBlur.h"

#include <algorithm>
#include <cmath>

namespace WindowServer {

namespace {

constexpr int channels = 4;
constexpr double narrowest = 4.0; ///< Small deviations below this would show the enlarged pixels.
constexpr int mostHalvings = 6;

/// to[i] += weight * from[i], in a loop that the compiler vectorises.
void accumulate(float* __restrict to, const float* __restrict from, float weight, int count) {
    for (int i = 0; i < count; ++i)
        to[i] += weight * from[i];
}

} // namespace

BlurPlan BlurPlan::forDeviation(double pixels) {
    // In small pixels, n averages of pairs add the variance (1 - 1/4^n)/12 of a discrete box, and
    // the interpolation adds the 1/6 of a triangle two pixels wide.
    const auto left = [pixels](int halvings) {
        const double area = std::pow(4.0, halvings);
        return std::max(pixels * pixels / area - (1 - 1 / area) / 12 - 1.0 / 6, 0.0);
    };
    BlurPlan plan{.halvings = 1};
    while (plan.halvings < mostHalvings && left(plan.halvings + 1) >= narrowest * narrowest)
        ++plan.halvings;
    plan.deviation = std::sqrt(left(plan.halvings));
    return plan;
}

GaussianBlur::GaussianBlur(double deviation) {
    const int reach = static_cast<int>(std::ceil(deviation * 3.5));
    double sum = 0;
    for (int i = 0; i <= reach; ++i) {
        const double weight = deviation > 0 ? std::exp(-i * i / (2 * deviation * deviation)) : 1;
        m_kernel.push_back(static_cast<float>(weight));
        sum += i == 0 ? weight : 2 * weight;
    }
    for (float& weight : m_kernel)
        weight = static_cast<float>(weight / sum);
}

void GaussianBlur::apply(SmallImage& image) {
    if (image.values.empty()) return;
    blurRows(image);
    m_scratch.width = image.width;
    m_scratch.height = image.height;
    m_scratch.values.assign(image.values.size(), 0);
    blurColumns(image, m_scratch);
    std::swap(image.values, m_scratch.values);
}

void GaussianBlur::blurRows(SmallImage& image) {
    const int reach = static_cast<int>(m_kernel.size()) - 1;
    const int count = image.width * channels;
    m_paddedRow.resize(static_cast<size_t>(image.width + 2 * reach) * channels);
    float* const middle = m_paddedRow.data() + reach * channels;
    for (int y = 0; y < image.height; ++y) {
        float* const row = image.row(y);
        std::copy_n(row, count, middle);
        for (int i = 1; i <= reach; ++i) {
            std::copy_n(row, channels, middle - i * channels);
            std::copy_n(row + count - channels, channels, middle + count + (i - 1) * channels);
        }
        std::fill_n(row, count, 0.0f);
        accumulate(row, middle, m_kernel[0], count);
        for (int i = 1; i <= reach; ++i) {
            accumulate(row, middle - i * channels, m_kernel[i], count);
            accumulate(row, middle + i * channels, m_kernel[i], count);
        }
    }
}

void GaussianBlur::blurColumns(const SmallImage& from, SmallImage& to) const {
    const int reach = static_cast<int>(m_kernel.size()) - 1;
    const int count = from.width * channels;
    for (int y = 0; y < from.height; ++y) {
        accumulate(to.row(y), from.row(y), m_kernel[0], count);
        for (int i = 1; i <= reach; ++i) {
            accumulate(to.row(y), from.row(std::max(y - i, 0)), m_kernel[i], count);
            accumulate(to.row(y), from.row(std::min(y + i, from.height - 1)), m_kernel[i], count);
        }
    }
}

} // namespace WindowServer
