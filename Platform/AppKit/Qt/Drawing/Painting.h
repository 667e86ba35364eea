#pragma once

#include "CoreGraphics/CGColor.h"
#include "Foundation/NSObject.h"

#include <QPainter>

QColor colorFrom(const CGColor& color);
/// In the same coordinates.
QRectF rectFrom(const NSRect& rect);

/// What `NSColor`, `NSBezierPath` and `NSImage` draw with. Its coordinates are the view's, its pen
/// and its brush the colours that were set. Null where nothing is being drawn.
extern QPainter* thePainter;
