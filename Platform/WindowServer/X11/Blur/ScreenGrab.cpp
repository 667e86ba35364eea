#include "WindowServer/X11/Blur/ScreenGrab.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/PixelMath.h"

#include <algorithm>
#include <vector>

namespace WindowServer {

namespace {

/// Adds one row of the screen, 32 bits a pixel, to the sums of the small pixels that it falls into.
void addRow(const uint8_t* from, int width, int factor, float* sums) {
    for (int x = 0; x < width; ++x, from += 4)
        for (int channel = 0; channel < 3; ++channel)
            sums[x / factor * 4 + channel] += from[channel];
}

} // namespace

bool grabScreen(Connection& connection, const PixelRect& area, int factor, SmallImage& image) {
    if (!connection.canBlurStill()) return false;
    std::ranges::fill(image.values, 0.0f);
    // One small row at a time, so that no readable picture of the screen is ever held here.
    for (int row = 0; row < image.height; ++row) {
        const int y = row * factor;
        const int height = std::min(factor, area.height - y);
        const auto strip = connection.reply(
            xcb_get_image_reply,
            xcb_get_image(connection.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, connection.root(),
                          static_cast<int16_t>(area.x), static_cast<int16_t>(area.y + y),
                          static_cast<uint16_t>(area.width), static_cast<uint16_t>(height), ~0u));
        if (!strip || xcb_get_image_data_length(strip.get()) < area.width * height * 4)
            return false;
        const uint8_t* pixels = xcb_get_image_data(strip.get());
        float* const sums = image.row(row);
        for (int line = 0; line < height; ++line, pixels += static_cast<ptrdiff_t>(area.width) * 4)
            addRow(pixels, area.width, factor, sums);
        for (int x = 0; x < image.width; ++x) {
            const int width = std::min(factor, area.width - x * factor);
            for (int channel = 0; channel < 3; ++channel)
                sums[x * 4 + channel] /= static_cast<float>(width * height);
        }
    }
    return true;
}

} // namespace WindowServer
