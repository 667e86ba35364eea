#pragma once

#include "Foundation/Foundation.h"

enum NSCompositingOperation : NSUInteger {
    NSCompositingOperationSourceAtop = 5, ///< Only where something stands already.
};

/// Fills in the colour that was set.
void NSRectFillUsingOperation(const NSRect& rect, NSCompositingOperation operation);
