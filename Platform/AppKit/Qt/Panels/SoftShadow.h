#pragma once

#include <QImage>

/// What the shadow takes on each side of what throws it, in points.
inline constexpr int softShadowMargin = 12;

/// The picture with so many pixels around it on each side, and the shadow there that all of the
/// program's windows throw where a compositor blends it. The scale is in pixels a point.
QImage withShadow(const QImage& picture, double margin, double scale);
