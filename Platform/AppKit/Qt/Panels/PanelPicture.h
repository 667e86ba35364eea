// What a panel shows, in device pixels, y down.
#pragma once

#include "AppKit/NSView.h"
#include "WindowServer/Session.h"

#include <QImage>
#include <QPainter>
#include <QRegion>

/// Pixels in a point of what a window that begins to be painted is painted on: what the toolkit
/// takes for the screen's may be another number.
inline double scaleOf(const QPainter& painter) { return painter.deviceTransform().m11(); }

/// The view as it draws itself on a clear ground, with a margin around it in points. The scale is
/// in pixels a point.
QImage pictureOf(NSView& view, const NSSize& size, int margin, double scale);

/// The rectangles that hold all of the picture that is not clear, and nothing else.
std::vector<WindowServer::PixelRect> inkOf(const QImage& picture);

/// What the shadow takes on each side of what throws it, in points.
inline constexpr int softShadowMargin = 12;

/// The picture, and in the margin around it the shadow that a compositor blends.
QImage withShadow(const QImage& picture, double scale);

/// An estimate of what lies behind the ink, from what is known of the surroundings. Empty for none.
QImage estimateBehind(const QImage& picture, const WindowServer::Snapshot& surroundings,
                      const QRegion& hidden);
