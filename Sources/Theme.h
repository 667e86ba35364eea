#pragma once

#include "SwiftUI/SwiftUI.h"

namespace Theme {

/// The program's accent colour.
inline constexpr Color blue =
    Color({.red = 0.11764705882352941, .green = 0.5333333333333333, .blue = 0.8980392156862745});

} // namespace Theme
