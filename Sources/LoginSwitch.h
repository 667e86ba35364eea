// What the toggle "Open at login" shows.
#pragma once

#include "Combine/ObservableObject.h"

/// Follows its toggle, and the system whenever it is refreshed. Nothing is told of changes that are
/// made elsewhere in between.
class LoginSwitch : public ObservableObject {
public:
    /// Starts as the system has it, and changes nothing there.
    LoginSwitch();

    /// A value other than the one it has is handed on to the system. It stays, also where the
    /// system refuses.
    Published<bool> on;

    /// Writes what the system says, where that differs. Like any write, it is handed on.
    void refresh();
};
