#pragma once

#include "CoreGraphics/CGColor.h"
#include "WindowServer/GaussianBlur.h"
#include "WindowServer/PixelRect.h"
#include "WindowServer/X11/Blur/Enlarger.h"

#include <memory>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// The blurred, tinted picture that fills one cover, kept many times smaller than the cover.
class Backdrop {
public:
    /// Size in device pixels; `deviation` is the Gaussian's, in device pixels.
    Backdrop(Connection& connection, int width, int height, double deviation);

    int width() const { return m_width; }
    int height() const { return m_height; }
    const BlurPlan& plan() const { return m_plan; }

    /// What lies behind the cover, reduced by the plan's factor and not blurred yet.
    SmallImage& source() { return m_source; }
    const SmallImage& source() const { return m_source; }
    /// To be told which part of the source, in small pixels, has changed since it was developed
    /// last. At the first time all of it counts.
    void sourceChanged(const PixelRect& part);

    /// Blurs the source, lays `overlay` over it and hands the result to the server. Gives the area
    /// of the cover, in its pixels, that looks different now; empty where none does.
    PixelRect develop(const CGColor& overlay);

    void paint(const Canvas& canvas, const PixelRect& area) const {
        m_enlarger->paint(canvas, area);
    }

    /// The mean colour of the picture as one pixel, 0xRRGGBB.
    uint32_t meanPixel() const;

private:
    PixelRect store(const CGColor& overlay, const PixelRect& blurred);

    int m_width;
    int m_height;
    BlurPlan m_plan;
    GaussianBlur m_blur;
    SmallImage m_source;
    PixelRect m_changed; ///< What of the source is not blurred yet.
    Pixels m_shown;
    std::unique_ptr<Enlarger> m_enlarger;
};

/// The picture stretched to another size, nearest pixels taken.
SmallImage resized(const SmallImage& image, int width, int height);

} // namespace WindowServer
