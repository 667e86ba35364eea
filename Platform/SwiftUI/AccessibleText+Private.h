#pragma once

#include "SwiftUI/View.h"

#include <string>

/// What a view reads as in one piece: its texts in order, joined with ", ", or the accessibility
/// label that stands in their place.
std::string accessibleText(const View& view);
