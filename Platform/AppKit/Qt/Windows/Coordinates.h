// Between the platform's coordinates, y up from the lower left of the first screen, and the
// toolkit's, y down. Both count in points. And between their events.
#pragma once

#include "AppKit/NSEvent.h"

#include <QRect>

NSPoint pointFrom(const QPointF& point);
QRect rectOf(const NSRect& rect);
NSRect frameOf(const QRect& rect);
/// In the same coordinates.
QRectF rectFrom(const NSRect& rect);
NSEvent eventOf(NSEventType type, Qt::KeyboardModifiers modifiers,
                std::optional<NSPoint> location = {});
