#include "WindowServer/GaussianBlur.h"

#include <algorithm>
#include <cmath>

namespace WindowServer {

namespace {

constexpr int channels = 4;
constexpr double narrowest = 4.0; ///< With a smaller deviation the enlarged pixels would show.
constexpr int mostHalvings = 6;

/// Adds what lies equally far on either side, in a loop that the compiler vectorises.
void accumulate(float* __restrict to, const float* one, const float* other, float weight,
                int count) {
    for (int i = 0; i < count; ++i)
        to[i] += weight * (one[i] + other[i]);
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
    m_kernel.front() /= 2; // It counts on either side.
    for (float& weight : m_kernel)
        weight = static_cast<float>(weight / sum);
}

void GaussianBlur::apply(SmallImage& image) {
    const SmallImage from = image;
    update(from, {0, 0, image.width, image.height}, image);
}

PixelRect GaussianBlur::update(const SmallImage& image, const PixelRect& changed,
                               SmallImage& blurred) {
    const PixelRect part = take(image, changed);
    for (int y = part.y; y < part.y + part.height; ++y)
        blurInto(blurred.row(y) + static_cast<ptrdiff_t>(part.x) * channels, y, part);
    return part;
}

PixelRect GaussianBlur::take(const SmallImage& image, const PixelRect& changed) {
    const int reach = static_cast<int>(m_kernel.size()) - 1;
    const int left = std::max(changed.x - reach, 0);
    const int top = std::max(changed.y - reach, 0);
    const PixelRect part{left, top, std::min(changed.x + changed.width + reach, image.width) - left,
                         std::min(changed.y + changed.height + reach, image.height) - top};
    if (m_rows.values.size() != image.values.size()) m_rows = SmallImage(image.width, image.height);
    for (int y = changed.y; y < changed.y + changed.height; ++y)
        blurRow(image.row(y), m_rows.row(y), image.width, part);
    return part;
}

void GaussianBlur::blurRow(const float* from, float* to, int width, const PixelRect& part) {
    const int reach = static_cast<int>(m_kernel.size()) - 1;
    m_paddedRow.resize(static_cast<size_t>(width + 2 * reach) * channels);
    float* const padded = m_paddedRow.data() + reach * channels;
    std::copy_n(from, width * channels, padded);
    for (int i = 1; i <= reach; ++i) {
        std::copy_n(from, channels, padded - i * channels);
        std::copy_n(from + (width - 1) * channels, channels, padded + (width + i - 1) * channels);
    }
    const int count = part.width * channels;
    const float* const middle = padded + part.x * channels;
    to += part.x * channels;
    std::fill_n(to, count, 0.0f);
    for (int i = 0; i <= reach; ++i)
        accumulate(to, middle - i * channels, middle + i * channels, m_kernel[i], count);
}

void GaussianBlur::blurInto(float* row, int y, const PixelRect& part) const {
    const int reach = static_cast<int>(m_kernel.size()) - 1;
    const int count = part.width * channels;
    const int start = part.x * channels;
    std::fill_n(row, count, 0.0f);
    for (int i = 0; i <= reach; ++i) {
        const float* const above = m_rows.row(std::max(y - i, 0));
        const float* const below = m_rows.row(std::min(y + i, m_rows.height - 1));
        accumulate(row, above + start, below + start, m_kernel[i], count);
    }
}

} // namespace WindowServer
