#pragma once

#include "AppKit/NSGraphics.h"
#include "AppKit/NSView.h"
#include "QuartzCore/QuartzCore.h"

/// How the changes that are made through an animator run.
class NSAnimationContext : public NSObject {
public:
    /// The group's that is being run; outside of any, one that nobody has changed.
    static NSAnimationContext& currentContext();

    /// Calls `changes` with a context of its own. Returns before the animations have run.
    static void runAnimationGroup(const std::function<void(NSAnimationContext&)>& changes);

    /// Seconds.
    double duration() const { return m_duration; }
    void setDuration(double duration) { m_duration = duration; }

    /// Null for an even pace.
    const std::shared_ptr<CAMediaTimingFunction>& timingFunction() const {
        return m_timingFunction;
    }
    void setTimingFunction(std::shared_ptr<CAMediaTimingFunction> function) {
        m_timingFunction = std::move(function);
    }

private:
    double m_duration = 0.25;
    std::shared_ptr<CAMediaTimingFunction> m_timingFunction;
};

class Animation;
class NSViewController;
class NativeWindow;

enum NSWindowStyleMask : NSUInteger {
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskTitled = 1 << 0,
    NSWindowStyleMaskClosable = 1 << 1,
    NSWindowStyleMaskMiniaturizable = 1 << 2,
    NSWindowStyleMaskNonactivatingPanel = 1 << 7,
};

enum NSBackingStoreType : NSUInteger { NSBackingStoreBuffered = 2 };

enum NSWindowCollectionBehavior : NSUInteger {
    NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
    NSWindowCollectionBehaviorMoveToActiveSpace = 1 << 1,
    NSWindowCollectionBehaviorStationary = 1 << 4,
    NSWindowCollectionBehaviorIgnoresCycle = 1 << 6,
    NSWindowCollectionBehaviorFullScreenAuxiliary = 1 << 8,
};

enum NSWindowAnimationBehavior : NSInteger { NSWindowAnimationBehaviorNone = 2 };

enum NSWindowToolbarStyle : NSInteger { NSWindowToolbarStylePreference = 2 };

inline constexpr NSInteger NSNormalWindowLevel = 0;
inline constexpr NSInteger NSFloatingWindowLevel = 3;
inline constexpr NSInteger NSScreenSaverWindowLevel = 1000;

/// A window. A borderless one shows the colour of the frontmost view that has one, above the
/// blurred picture of a visible effect view; a panel is drawn by its content view. One that shows
/// what a view controller makes has a title bar, and is left to the window manager below level
/// 1000. From there on it stands above the other programs' windows, with a frame of its own, and
/// takes the keyboard itself.
class NSWindow : public NSObject {
public:
    /// The style decides the kind of native window; `backing` and `defer` have no effect.
    NSWindow(const NSRect& contentRect, NSUInteger styleMask, NSBackingStoreType backing,
             bool defer);
    ~NSWindow() override;

    /// As large as the controller prefers, with its title and all that a title bar can have.
    static std::shared_ptr<NSWindow>
    windowWithContentViewController(std::shared_ptr<NSViewController> controller);
    const std::shared_ptr<NSViewController>& contentViewController() const {
        return m_contentViewController;
    }

    NSUInteger styleMask() const { return m_styleMask; }
    /// Which buttons a title bar has; to be set before the window is first shown.
    void setStyleMask(NSUInteger styleMask) { m_styleMask = styleMask; }
    virtual bool canBecomeKeyWindow() const { return false; }
    virtual bool canBecomeMainWindow() const { return false; }

    /// Below 1 where the window server does not know the window.
    NSInteger windowNumber() const;

    const std::string& title() const { return m_title; }
    void setTitle(const std::string& title) {
        m_title = title;
        textsChanged();
    }

    /// What kind of window it is, before it is first shown: a cover or a panel is known to other
    /// programs by it and its screen's name, "cover:DP-1".
    const std::string& identifier() const { return m_identifier; }
    void setIdentifier(const std::string& identifier) {
        m_identifier = identifier;
        textsChanged();
    }

    /// Without the title bar.
    NSRect frame() const { return m_frame; }
    void setFrame(const NSRect& frame, bool display);
    void setFrameOrigin(const NSPoint& origin);
    /// The upper left corner stays where it is.
    void setContentSize(const NSSize& size);
    /// With its title bar in the middle of the screen where the pointer is, and a little above.
    void center();

    NSInteger level() const { return m_level; }
    void setLevel(NSInteger level);

    /// From 0 to 1.
    double alphaValue() const { return m_alphaValue; }
    void setAlphaValue(double alpha);

    /// Sets properties with an animation, as the current animation context has it. A property that
    /// is set again, here or on the window, ends what ran before.
    class Animator {
    public:
        explicit Animator(NSWindow& window) : m_window(window) {}
        void setFrameOrigin(const NSPoint& origin);
        void setAlphaValue(double alpha);

    private:
        NSWindow& m_window;
    };
    Animator animator() { return Animator(*this); }

    const std::shared_ptr<NSView>& contentView() const { return m_contentView; }
    /// Fits the view to the window.
    void setContentView(std::shared_ptr<NSView> view);
    /// Called by the views as their looks change.
    void setViewsNeedDisplay(bool needDisplay);
    /// Called by the views as what they say of themselves changes.
    void textsChanged();

    bool isVisible() const { return m_visible; }
    void orderFrontRegardless();
    /// In front, and with the keyboard.
    void makeKeyAndOrderFront(const id& sender);
    void orderOut(const id& sender);
    void close() { orderOut(nullptr); }

    /// Of a window with a controller alone: it leaves while another program is the active one.
    bool hidesOnDeactivate() const { return m_hidesOnDeactivate; }
    void setHidesOnDeactivate(bool hides) { m_hidesOnDeactivate = hides; }

    /// Called by what stands on the screen for the window when the user has moved it.
    void movedByUser(const NSPoint& origin) { m_frame.origin = origin; }

    // Without effect here: no window is restored, animated or moved by more than the program and
    // its title bar, covers and panels have no ground of their own and are on all workspaces,
    // covers alone let the mouse through and panels alone throw a shadow, where a compositor blends
    // it, and objects live by reference.
    void setBackgroundColor(const NSColor&) {}
    void setHasShadow(bool) {}
    void setIgnoresMouseEvents(bool) {}
    void setRestorable(bool) {}
    void setToolbarStyle(NSWindowToolbarStyle) {}
    void setOpaque(bool) {}
    void setMovable(bool) {}
    void setReleasedWhenClosed(bool) {}
    void setCollectionBehavior(NSUInteger) {}
    void setAnimationBehavior(NSWindowAnimationBehavior) {}

private:
    friend class NSApplication;
    friend class NativeWindow;

    explicit NSWindow(std::shared_ptr<NSViewController> controller);

    void moveTo(const NSRect& frame);
    void fadeTo(double alpha);

    const std::shared_ptr<NSViewController> m_contentViewController;
    NSUInteger m_styleMask;
    bool m_visible = false;
    bool m_hidesOnDeactivate = false;
    std::unique_ptr<Animation> m_move;
    std::unique_ptr<Animation> m_fade;
    std::string m_title;
    std::string m_identifier;
    NSRect m_frame;
    NSInteger m_level = NSNormalWindowLevel;
    double m_alphaValue = 1;
    std::shared_ptr<NSView> m_contentView;
    std::shared_ptr<NativeWindow> m_native; ///< The last, which reads the others.
};

/// A window beside those that a user works in, which does not take the keyboard.
class NSPanel : public NSWindow {
public:
    using NSWindow::NSWindow;

    /// Sets the level with it.
    void setFloatingPanel(bool floating) {
        setLevel(floating ? NSFloatingWindowLevel : NSNormalWindowLevel);
    }
};

/// Keeps a window for as long as it may be wanted again.
class NSWindowController : public NSObject {
public:
    explicit NSWindowController(std::shared_ptr<NSWindow> window) : m_window(std::move(window)) {}
    const std::shared_ptr<NSWindow>& window() const { return m_window; }
    void showWindow(const id& sender) { m_window->makeKeyAndOrderFront(sender); }

private:
    std::shared_ptr<NSWindow> m_window;
};
