#pragma once

#include "LoginSwitch.h"

#include "SwiftUI/SwiftUI.h"

/// The first settings tab: how the program behaves, and the little that can be changed.
struct GeneralSettings {
    ObservedObject<LoginSwitch> login;

    View body() const;
};
