#pragma once

#include "LockedFeature.h"

#include "SwiftUI/SwiftUI.h"

#include <string>

/// A row for something that this edition holds fixed. A click anywhere in it tells why.
struct LockedRow {
    std::string label;
    std::string note;
    LockedFeature feature;

    View body() const;
};
