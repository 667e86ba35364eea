#pragma once

#include "SwiftUI/SwiftUI.h"

/// The capsule that marks something as part of the paid edition.
struct SummitTag {
    View body() const;
};
