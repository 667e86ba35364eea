#pragma once

#include "AppKit/NSColor.h"
#include "AppKit/NSView.h"
#include "Foundation/NSGeometry.h"
#include "Foundation/NSObjCRuntime.h"
#include "Foundation/NSObject.h"

#include <memory>
#include <string>

class Animation;
class NativeWindow;

enum NSWindowStyleMask : NSUInteger {
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskNonactivatingPanel = 1 << 7,
};

enum NSBackingStoreType : NSUInteger { NSBackingStoreBuffered = 2 };

enum NSWindowCollectionBehavior : NSUInteger {
    NSWindowCollectionBehaviorCanJoinAllSpaces = 1 << 0,
    NSWindowCollectionBehaviorStationary = 1 << 4,
    NSWindowCollectionBehaviorIgnoresCycle = 1 << 6,
    NSWindowCollectionBehaviorFullScreenAuxiliary = 1 << 8,
};

enum NSWindowAnimationBehavior : NSInteger {
    NSWindowAnimationBehaviorDefault = 0,
    NSWindowAnimationBehaviorNone = 2,
};

inline constexpr NSInteger NSNormalWindowLevel = 0;
inline constexpr NSInteger NSFloatingWindowLevel = 3;
inline constexpr NSInteger NSScreenSaverWindowLevel = 1000;

/// A window without a frame. A borderless one lays what its views show over each other into one
/// colour, above the blurred picture of a visible effect view; a panel is drawn by its content
/// view.
class NSWindow : public NSObject {
public:
    /// The style chooses what stands on the screen for the window, which is made whenever that
    /// suits it, whatever `defer` asks.
    NSWindow(const NSRect& contentRect, NSUInteger styleMask, NSBackingStoreType backing,
             bool defer);
    ~NSWindow() override;

    virtual bool canBecomeKeyWindow() const { return false; }
    virtual bool canBecomeMainWindow() const { return false; }

    /// Below 1 where the window server has no part in the window.
    NSInteger windowNumber() const;

    const std::string& title() const { return m_title; }
    void setTitle(const std::string& title);

    NSRect frame() const { return m_frame; }
    void setFrame(const NSRect& frame, bool display);
    void setFrameOrigin(const NSPoint& origin);

    NSInteger level() const { return m_level; }
    void setLevel(NSInteger level);

    /// From 0 to 1.
    double alphaValue() const { return m_alphaValue; }
    void setAlphaValue(double alpha);

    /// The window's properties as they can be set with an animation, which runs as the current
    /// animation context has it. One that is set again, here or on the window, ends what ran
    /// before.
    class Animator {
    public:
        void setFrameOrigin(const NSPoint& origin);
        void setAlphaValue(double alpha);

    private:
        friend class NSWindow;
        explicit Animator(NSWindow& window) : m_window(window) {}
        NSWindow& m_window;
    };
    Animator animator() { return Animator(*this); }

    bool ignoresMouseEvents() const { return m_ignoresMouseEvents; }
    void setIgnoresMouseEvents(bool ignores);

    NSColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const NSColor& color);

    const std::shared_ptr<NSView>& contentView() const { return m_contentView; }
    /// Fits the view to the window.
    void setContentView(std::shared_ptr<NSView> view);
    /// Called by the views as their looks change.
    void setViewsNeedDisplay(bool needDisplay);
    /// Called by the views as what they say of themselves changes.
    void viewTextsChanged();

    void orderFrontRegardless();
    void orderOut(const id& sender);

    // What the window server grants every window of this kind anyway; kept for those who ask.
    bool isOpaque() const { return m_opaque; }
    void setOpaque(bool opaque) { m_opaque = opaque; }
    bool hasShadow() const { return m_hasShadow; }
    void setHasShadow(bool hasShadow) { m_hasShadow = hasShadow; }
    bool isMovable() const { return m_movable; }
    void setMovable(bool movable) { m_movable = movable; }
    bool isReleasedWhenClosed() const { return m_releasedWhenClosed; }
    void setReleasedWhenClosed(bool released) { m_releasedWhenClosed = released; }
    NSUInteger collectionBehavior() const { return m_collectionBehavior; }
    void setCollectionBehavior(NSUInteger behavior) { m_collectionBehavior = behavior; }
    NSWindowAnimationBehavior animationBehavior() const { return m_animationBehavior; }
    void setAnimationBehavior(NSWindowAnimationBehavior behavior) {
        m_animationBehavior = behavior;
    }

private:
    void moveTo(const NSRect& frame);
    void fadeTo(double alpha);

    const std::unique_ptr<NativeWindow> m_native;
    std::unique_ptr<Animation> m_move;
    std::unique_ptr<Animation> m_fade;
    std::string m_title;
    NSRect m_frame;
    NSInteger m_level = NSNormalWindowLevel;
    double m_alphaValue = 1;
    bool m_ignoresMouseEvents = false;
    NSColor m_backgroundColor = NSColor::clearColor();
    std::shared_ptr<NSView> m_contentView;
    bool m_opaque = true;
    bool m_hasShadow = true;
    bool m_movable = true;
    bool m_releasedWhenClosed = true;
    NSUInteger m_collectionBehavior = 0;
    NSWindowAnimationBehavior m_animationBehavior = NSWindowAnimationBehaviorDefault;
};
