#pragma once

#include "AppKit/NSWindow.h"

/// The native half of a window: what stands on the screen for it. It is told every change, and may
/// read the rest from the window. A kind of window ignores what it does not show.
class NativeWindow {
public:
    /// Of the kind that the window's style and level ask for.
    static std::shared_ptr<NativeWindow> make(NSWindow& window);

    virtual ~NativeWindow() = default;

    virtual NSInteger number() const = 0;
    /// The content with its title bar and all else that stands around it.
    virtual NSRect frameAround(const NSRect& content) const { return content; }
    virtual void setTitle(const std::string& title) = 0;
    virtual void setIdentifier(const std::string&) {}
    virtual void setFrame(const NSRect& frame) = 0;
    virtual void setLevel(NSInteger) {}
    virtual void setIgnoresMouseEvents(bool) {}
    virtual void setAlpha(double) {}
    virtual void displayViews() {}  ///< The views look different.
    virtual void describeViews() {} ///< They say something else of themselves.
    virtual void makeKey() {}       ///< To have the keyboard.
    virtual void orderFront() = 0;
    virtual void orderOut() = 0;

protected:
    /// Puts a new one in the place of the window's own, which may go with it.
    static NativeWindow& renew(NSWindow& window);
};
