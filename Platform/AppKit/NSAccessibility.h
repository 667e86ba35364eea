#pragma once

#include <string>

/// What assistive technology takes a view for.
using NSAccessibilityRole = std::string;

inline const NSAccessibilityRole NSAccessibilityButtonRole = "AXButton";
