#pragma once

#include "AppKit/NSEvent.h"
#include "QuartzCore/QuartzCore.h"

class NSView;
class NSWindow;

enum NSAutoresizingMaskOptions : NSUInteger {
    NSViewWidthSizable = 2,
    NSViewHeightSizable = 16,
};

enum NSWindowOrderingMode : NSInteger {
    NSWindowBelow = -1,
    NSWindowAbove = 1,
};

/// What assistive technology takes a view for.
using NSAccessibilityRole = std::string;

inline const NSAccessibilityRole NSAccessibilityButtonRole = "AXButton";

enum NSTrackingAreaOptions : NSUInteger {
    NSTrackingMouseEnteredAndExited = 0x1,
    NSTrackingActiveAlways = 0x80,
    NSTrackingInVisibleRect = 0x200,
};

/// Makes a view hear of the pointer as it enters and leaves. The whole view counts, whatever the
/// rectangle, and whichever application is active.
class NSTrackingArea : public NSObject {
public:
    /// The owner hears of the pointer. It is not retained: as a rule the area is its own.
    NSTrackingArea(const NSRect&, NSUInteger /*options*/, NSView* owner, const id& /*userInfo*/)
        : m_owner(owner) {}
    NSView* owner() const { return m_owner; }

private:
    NSView* m_owner;
};

/// A rectangle in a window: a colour of its own where it has a layer, and the views in front of it.
/// The content view of a panel draws itself and hears the mouse.
class NSView : public NSObject {
public:
    NSView() = default;
    explicit NSView(const NSRect& frame) : m_frame(frame) {}
    ~NSView() override;

    /// In the superview's coordinates.
    const NSRect& frame() const { return m_frame; }
    void setFrame(const NSRect& frame);
    /// The view's own coordinates: the same size, origin 0.
    NSRect bounds() const { return {{}, m_frame.size}; }

    /// Without effect: whatever its frame, a view fills a borderless window, and a panel has but
    /// one.
    void setAutoresizingMask(NSUInteger) {}

    /// Back to front.
    const std::vector<std::shared_ptr<NSView>>& subviews() const { return m_subviews; }
    /// Behind or in front of another one; in front of all where that is none of them.
    void addSubview(std::shared_ptr<NSView> view, NSWindowOrderingMode positioned = NSWindowAbove,
                    const std::shared_ptr<NSView>& relativeTo = nullptr);

    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden);

    void setWantsLayer(bool wantsLayer);
    /// Null until a layer is wanted.
    const std::shared_ptr<CALayer>& layer() const { return m_layer; }

    /// Null outside a window.
    NSWindow* window() const;
    /// Called by the window that takes the view as its content, or lets it go.
    void viewWillMoveToWindow(NSWindow* window) { m_window = window; }

    /// The view is in another window now, or in none. Passed on to the subviews.
    virtual void viewDidMoveToWindow();

    void setNeedsDisplay(bool needsDisplay);
    /// With `NSColor`, `NSBezierPath` and `NSImage`.
    virtual void drawRect(const NSRect&) {}
    virtual bool isFlipped() const { return false; } ///< Without effect: y is up in all.

    // The mouse. A press goes to the view under the pointer, and so does all up to its release.
    virtual void mouseDown(const NSEvent&) {}
    virtual void mouseDragged(const NSEvent&) {}
    virtual void mouseUp(const NSEvent&) {}
    virtual void rightMouseDown(const NSEvent&) {}
    virtual void mouseEntered(const NSEvent&) {}
    virtual void mouseExited(const NSEvent&) {}
    /// Whether a press counts that finds another application active.
    virtual bool acceptsFirstMouse(const std::optional<NSEvent>&) const { return false; }

    const std::vector<std::shared_ptr<NSTrackingArea>>& trackingAreas() const {
        return m_trackingAreas;
    }
    void addTrackingArea(std::shared_ptr<NSTrackingArea> area) {
        m_trackingAreas.push_back(std::move(area));
    }

    const std::string& toolTip() const { return m_toolTip; }
    void setToolTip(const std::string& toolTip) {
        m_toolTip = toolTip;
        textsChanged();
    }
    const std::string& accessibilityLabel() const { return m_accessibilityLabel; }
    void setAccessibilityLabel(const std::string& label) {
        m_accessibilityLabel = label;
        textsChanged();
    }
    const NSAccessibilityRole& accessibilityRole() const { return m_accessibilityRole; }
    void setAccessibilityRole(const NSAccessibilityRole& role) { m_accessibilityRole = role; }

private:
    void textsChanged() const;

    NSRect m_frame;
    std::vector<std::shared_ptr<NSView>> m_subviews;
    NSView* m_superview = nullptr;
    NSWindow* m_window = nullptr; ///< Set on a content view alone.
    bool m_hidden = false;
    std::shared_ptr<CALayer> m_layer;
    std::vector<std::shared_ptr<NSTrackingArea>> m_trackingAreas;
    std::string m_toolTip;
    std::string m_accessibilityLabel;
    NSAccessibilityRole m_accessibilityRole;
};

enum NSVisualEffectBlendingMode : NSInteger { NSVisualEffectBlendingModeBehindWindow = 0 };
enum NSVisualEffectMaterial : NSInteger { NSVisualEffectMaterialFullScreenUI = 15 };
enum NSVisualEffectState : NSInteger { NSVisualEffectStateActive = 1 };

/// A view that shows a blurred picture of what lies behind its window.
class NSVisualEffectView : public NSView {
public:
    using NSView::NSView;

    // Without effect: there is one material, and it looks alike in every state.
    void setBlendingMode(NSVisualEffectBlendingMode) {}
    void setMaterial(NSVisualEffectMaterial) {}
    void setState(NSVisualEffectState) {}
};
