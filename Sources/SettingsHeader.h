#pragma once

#include "SwiftUI/SwiftUI.h"

/// The strip on top of each settings tab: the program's name and version, and two ways to support
/// it.
struct SettingsHeader {
    View body() const;
};
