#pragma once

#include "WindowServer/PixelRect.h"

#include <cstddef>
#include <vector>

namespace WindowServer {

/// Pixels of four channels, row after row: blue, green, red, 0 to 255, and one that covers do not
/// use.
struct SmallImage {
    int width = 0;
    int height = 0;
    std::vector<float> values;

    SmallImage() = default;
    SmallImage(int w, int h) : width(w), height(h), values(static_cast<size_t>(w) * h * 4) {}
    float* row(int y) { return values.data() + static_cast<size_t>(y) * width * 4; }
    const float* row(int y) const { return values.data() + static_cast<size_t>(y) * width * 4; }
};

/// How a wide Gaussian is split: the picture is halved `halvings` times by box filters, blurred
/// there with `deviation`, and enlarged again by linear interpolation. The three together have the
/// variance that was asked for.
struct BlurPlan {
    int halvings = 1;     ///< At least 1.
    double deviation = 0; ///< In pixels of the small picture.

    /// For a Gaussian of that standard deviation in full-size pixels.
    static BlurPlan forDeviation(double pixels);
    int factor() const { return 1 << halvings; }
};

/// A separable Gaussian with the picture's edge pixels continued outwards. The plan bounds the
/// deviation, so the cost grows with the number of pixels alone.
class GaussianBlur {
public:
    /// A standard deviation in pixels; 0 leaves pictures as they are.
    explicit GaussianBlur(double deviation);

    void apply(SmallImage& image);

    /// Takes in the part of the image that has changed since the last call. Gives the part of the
    /// blurred image that depends on it.
    PixelRect take(const SmallImage& image, const PixelRect& changed);
    /// Row `y` of that part.
    void blurInto(float* row, int y, const PixelRect& part) const;

    /// Both for the whole part, in an image that this object has made of an earlier state.
    PixelRect update(const SmallImage& image, const PixelRect& changed, SmallImage& blurred);

private:
    void blurRow(const float* from, float* to, int width, const PixelRect& part);

    std::vector<float> m_kernel; ///< From the centre, which is added twice, outwards.
    std::vector<float> m_paddedRow;
    SmallImage m_rows; ///< The image blurred along its rows alone.
};

} // namespace WindowServer
