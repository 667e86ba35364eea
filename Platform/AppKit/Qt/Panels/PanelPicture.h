// What a panel shows, in device pixels, y down.
#pragma once

#include "AppKit/NSView.h"
#include "WindowServer/Session.h"

#include <QImage>
#include <QRegion>

/// The view as it draws itself on a clear ground. The size is in points, the scale in pixels a
/// point.
QImage pictureOf(NSView& view, const NSSize& size, double scale);

/// The rectangles that hold all of the picture that is not clear, and nothing else.
std::vector<WindowServer::PixelRect> inkOf(const QImage& picture);

/// What may well lie behind the ink, as its surroundings have it, but for what something in front
/// hides of them. Empty where these are not known.
QImage estimateBehind(const QImage& picture, const WindowServer::Snapshot& surroundings,
                      const QRegion& hidden = {});
