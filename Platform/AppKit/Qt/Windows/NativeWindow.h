#pragma once

#include "AppKit/NSWindow.h"

/// The native half of a window: what stands on the screen for it. It is told every change, and may
/// read the rest from the window. A kind of window ignores what it does not show.
class NativeWindow {
public:
    /// Of the kind that the window's style and level ask for.
    static std::shared_ptr<NativeWindow> make(NSWindow& window);
    /// All that there are, oldest first.
    static std::vector<NativeWindow*> all();

    NativeWindow();
    virtual ~NativeWindow();

    virtual NSInteger number() const = 0;
    virtual void describe() = 0; ///< It or its views say something else of themselves.
    virtual void setFrame(const NSRect& frame) = 0;
    virtual void setLevel(NSInteger) {}
    virtual void setAlpha(double) {}
    virtual void displayViews() {} ///< The views look different.
    virtual void center() {}
    virtual void makeKey() {} ///< To have the keyboard.
    virtual void orderFront() = 0;
    virtual void orderOut() = 0;
    virtual void checkForm() {}  ///< A compositor has come or gone.
    virtual void menuClosed() {} ///< The last open menu of the program's has.

protected:
    /// Puts a new one in the place of the window's own, which may go with it.
    static NativeWindow& renew(NSWindow& window);
};

/// A window with a frame of its own, above all others.
std::shared_ptr<NativeWindow> makeFloatingWindow(NSWindow& window);
/// A panel. One that its owner has dropped leaves, and lives until the event at hand is done.
std::shared_ptr<NativeWindow> makePanelWindow(NSWindow& window);
