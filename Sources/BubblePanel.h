// The small round window of a floating button.
#pragma once

#include "AppKit/AppKit.h"
#include "Foundation/Foundation.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

/// All of a floating button that is seen: it turns the mouse into three callbacks and fades while
/// nothing happens.
class BubbleView : public NSView, public std::enable_shared_from_this<BubbleView> {
public:
    BubbleView(const CGRect& frame, CGFloat idleAlpha);

    std::function<void()> onClick = [] {};
    /// The event that asks for the menu, and this view.
    std::function<void(const NSEvent&, NSView&)> onMenu = [](const NSEvent&, NSView&) {};
    /// The user has let go of the button after a drag.
    std::function<void()> onMoved = [] {};

    /// Mirrors the cover. A button does not fade while the screens are blurred.
    bool blurred() const { return m_blurred; }
    void setBlurred(bool blurred);

    bool isFlipped() const override { return false; }
    bool acceptsFirstMouse(const std::optional<NSEvent>&) const override { return true; }
    void viewDidMoveToWindow() override;
    void drawRect(const NSRect& dirtyRect) override;
    void mouseDown(const NSEvent& event) override;
    void mouseDragged(const NSEvent& event) override;
    void mouseUp(const NSEvent& event) override;
    void rightMouseDown(const NSEvent& event) override;
    void mouseEntered(const NSEvent& event) override;
    void mouseExited(const NSEvent& event) override;

private:
    void describe();
    void wake();
    void rest();
    void dim();
    void drawSymbol() const;

    bool m_blurred = false;
    const CGFloat idleAlpha; ///< The window's while nothing happens.
    CGPoint downMouse;       ///< Where the pointer was on the screen at the last press.
    CGPoint downOrigin;      ///< And the window.
    bool dragging = false;   ///< The press has become a drag.
    bool hovering = false;
    std::shared_ptr<NSTimer> dimTimer;
};

class BubblePanel : public NSPanel {
public:
    BubblePanel(CGFloat size, CGFloat idleAlpha);

    const std::shared_ptr<BubbleView> button;
    /// The display number of the screen that the button belongs to, wherever it is dragged.
    std::optional<uint32_t> home;

    bool canBecomeKeyWindow() const override { return false; }
    bool canBecomeMainWindow() const override { return false; }
};
