#pragma once

#include "AppKit/NSWindow.h"

/// A window beside those that a user works in. It takes neither the keyboard nor the application's
/// attention.
class NSPanel : public NSWindow {
public:
    NSPanel(const NSRect& contentRect, NSUInteger styleMask, NSBackingStoreType backing, bool defer)
        : NSWindow(contentRect, styleMask, backing, defer) {
        setHidesOnDeactivate(true);
    }

    /// Sets the level with it.
    void setFloatingPanel(bool floating) {
        setLevel(floating ? NSFloatingWindowLevel : NSNormalWindowLevel);
    }
};
