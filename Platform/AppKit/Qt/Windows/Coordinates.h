// Between the platform's coordinates, y up from the lower left of the first screen, and the
// toolkit's, y down. Both count in points.
#pragma once

#include "Foundation/NSObject.h"

#include <QRect>

NSPoint pointFrom(const QPointF& point);
QRect rectOf(const NSRect& rect);
NSRect frameOf(const QRect& rect);
