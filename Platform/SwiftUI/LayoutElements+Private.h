// Elements that show nothing themselves and only give others their places.
#pragma once

#include "SwiftUI/Element+Private.h"
#include "SwiftUI/ViewNode+Private.h"

#include <QMarginsF>

/// Along the stack each child takes its part of the room, the least flexible first, and spacers
/// share what is left.
ElementPointer makeStack(bool vertical, double alignment, std::optional<double> spacing,
                         std::vector<ElementPointer> children);
ElementPointer makeSpacer(const SpacerNode& spacer);
ElementPointer makePadding(const QMarginsF& margins, ElementPointer content);
ElementPointer makeFrame(const View::FixedFrame& frame, ElementPointer content);
ElementPointer makeFrame(const View::FlexibleFrame& frame, ElementPointer content);
ElementPointer makeFixedSize(const View::FixedAxes& axes, ElementPointer content);
ElementPointer makeBackground(ElementPointer background, ElementPointer content);
