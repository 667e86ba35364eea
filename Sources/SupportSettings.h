#pragma once

#include "SwiftUI/SwiftUI.h"

/// The second settings tab: thanks, and what the paid edition adds.
struct SupportSettings {
    View body() const;
};
