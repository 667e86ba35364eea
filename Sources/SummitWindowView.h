#pragma once

#include "SwiftUI/SwiftUI.h"

#include <functional>

/// What the edition window shows.
struct SummitWindowView {
    std::function<void()> buy;
    std::function<void()> notNow;

    View body() const;
};
