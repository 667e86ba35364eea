#pragma once

#include "SwiftUI/SwiftUI.h"

/// Everything that the paid edition adds, a row for each feature.
struct SummitFeatureList {
    View body() const;
};
