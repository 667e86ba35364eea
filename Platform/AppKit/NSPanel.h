#pragma once

#include "AppKit/NSWindow.h"

/// A window beside those that a user works in. It takes neither the keyboard nor the application's
/// attention.
class NSPanel : public NSWindow {
public:
    using NSWindow::NSWindow;

    bool isFloatingPanel() const { return level() == NSFloatingWindowLevel; }
    /// Sets the level with it.
    void setFloatingPanel(bool floating) {
        setLevel(floating ? NSFloatingWindowLevel : NSNormalWindowLevel);
    }

    // Nothing hides a panel here; kept for those who ask.
    bool hidesOnDeactivate() const { return m_hidesOnDeactivate; }
    void setHidesOnDeactivate(bool hides) { m_hidesOnDeactivate = hides; }

private:
    bool m_hidesOnDeactivate = true;
};
