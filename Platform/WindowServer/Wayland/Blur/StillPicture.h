#pragma once

#include "CoreGraphics/CGColor.h"
#include "WindowServer/GaussianBlur.h"

#include <QImage>
#include <QRegion>

namespace WindowServer::Wayland {

/// What stood on an output at one moment, too small for anything to be made out in it.
class StillPicture {
public:
    /// Of a picture of the output, but for what our own windows covered of it, and for a Gaussian
    /// of that standard deviation, all in its pixels.
    StillPicture(const QImage& output, const QRegion& ours, double deviation);

    /// Under that colour, to be stretched over the output.
    QImage under(const CGColor& overlay) const;

private:
    SmallImage m_blurred;
};

} // namespace WindowServer::Wayland
