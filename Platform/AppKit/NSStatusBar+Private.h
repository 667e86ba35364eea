#pragma once

#include "AppKit/NSStatusBar.h"

/// The items that stand in the bar, for those who look at it from outside as a user does.
std::vector<std::shared_ptr<NSStatusItem>> itemsOf(const NSStatusBar& bar);
