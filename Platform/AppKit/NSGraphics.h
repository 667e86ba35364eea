#pragma once

#include "Foundation/NSGeometry.h"
#include "Foundation/NSObjCRuntime.h"

enum NSCompositingOperation : NSUInteger {
    NSCompositingOperationSourceAtop = 5, ///< Only where something stands already.
};

/// Fills in the colour that was set.
void NSRectFillUsingOperation(const NSRect& rect, NSCompositingOperation operation);
