#include "BubblePanel.h"

#include "HotKey.h"
#include "Levels.h"
#include "Theme.h"

#include <cmath>
#include <string>

namespace {

const NSColor& discColor(bool blurred) {
    static const NSColor dark = NSColor::colorWithSRGBRed(28 / 255.0, 32 / 255.0, 41 / 255.0, 0.9);
    const auto& [r, g, b] = std::get<Color::Components>(Theme::blue.base());
    static const NSColor blue = NSColor::colorWithSRGBRed(r, g, b, 1.0);
    return blurred ? blue : dark;
}

/// The image's shape in white.
std::shared_ptr<NSImage> whitened(const std::shared_ptr<NSImage>& image) {
    return NSImage::imageWithSize(image->size(), false, [image](const NSRect& rect) {
        image->drawInRect(rect);
        NSColor::whiteColor().set();
        NSRectFillUsingOperation(rect, NSCompositingOperationSourceAtop);
        return true;
    });
}

} // namespace

BubbleView::BubbleView(const CGRect& frame, CGFloat idle) : NSView(frame), idleAlpha(idle) {
    describe();
    addTrackingArea(std::make_shared<NSTrackingArea>(
        CGRectMake(0, 0, 0, 0),
        NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways | NSTrackingInVisibleRect, this,
        nullptr));
}

void BubbleView::setBlurred(bool blurred) {
    if (m_blurred == blurred) return;
    m_blurred = blurred;
    setNeedsDisplay(true);
    describe();
    if (blurred)
        wake();
    else
        rest();
}

void BubbleView::viewDidMoveToWindow() {
    NSView::viewDidMoveToWindow();
    if (window()) window()->setAlphaValue(1.0);
    rest();
}

void BubbleView::mouseDown(const NSEvent& event) {
    if (event.modifierFlags() & NSEventModifierFlagControl) {
        onMenu(event, *this);
        return;
    }
    wake();
    downMouse = NSEvent::mouseLocation();
    downOrigin = window() ? window()->frame().origin : CGPoint{};
    dragging = false;
}

void BubbleView::mouseDragged(const NSEvent&) {
    const CGPoint mouse = NSEvent::mouseLocation();
    const double dx = mouse.x - downMouse.x;
    const double dy = mouse.y - downMouse.y;
    if (!dragging) {
        if (std::hypot(dx, dy) <= 3.0) return;
        dragging = true;
    }
    if (window()) window()->setFrameOrigin({downOrigin.x + dx, downOrigin.y + dy});
}

void BubbleView::mouseUp(const NSEvent& event) {
    if (dragging) {
        dragging = false;
        onMoved();
    } else if (!(event.modifierFlags() & NSEventModifierFlagControl)) {
        onClick();
    }
    rest();
}

void BubbleView::rightMouseDown(const NSEvent& event) {
    wake();
    onMenu(event, *this);
    rest();
}

void BubbleView::mouseEntered(const NSEvent&) {
    hovering = true;
    wake();
}

void BubbleView::mouseExited(const NSEvent&) {
    hovering = false;
    rest();
}

void BubbleView::wake() {
    if (dimTimer) dimTimer->invalidate();
    dimTimer = nullptr;
    if (window()) window()->animator().setAlphaValue(1.0); // Takes the place of a running fade.
    if (window()) window()->setAlphaValue(1.0);
}

void BubbleView::rest() {
    if (dimTimer) dimTimer->invalidate();
    if (m_blurred || hovering) return;
    dimTimer = NSTimer::scheduledTimerWithTimeInterval(
        2.5, false, [weakSelf = weak_from_this()](const std::shared_ptr<NSTimer>&) {
            if (const auto self = weakSelf.lock()) self->dim();
        });
}

void BubbleView::dim() {
    if (!window() || m_blurred || hovering) return;
    NSAnimationContext::runAnimationGroup([this](NSAnimationContext& context) {
        context.setDuration(0.3);
        window()->animator().setAlphaValue(idleAlpha);
    });
}

void BubbleView::describe() {
    setToolTip(m_blurred ? "Show the screens (" + HotKey::keys + ")"
                         : "Blur every screen (" + HotKey::keys +
                               "). Drag to move, right-click for more.");
    setAccessibilityLabel(m_blurred ? "Show the screens" : "Blur every screen");
    setAccessibilityRole(NSAccessibilityButtonRole);
}

void BubbleView::drawRect(const NSRect&) {
    const auto disc = NSBezierPath::bezierPathWithOvalInRect(CGRectInset(bounds(), 1.0, 1.0));
    discColor(m_blurred).setFill();
    disc->fill();
    NSColor::whiteColor().colorWithAlphaComponent(0.3).setStroke();
    disc->setLineWidth(1.0);
    disc->stroke();
    drawSymbol();
}

void BubbleView::drawSymbol() const {
    const auto configuration = NSImageSymbolConfiguration::configurationWithPointSize(
        CGRectGetWidth(bounds()) * 0.36, NSFontWeightSemibold);
    const auto symbol =
        NSImage::imageWithSystemSymbolName(m_blurred ? "eye" : "eye.slash", std::nullopt);
    if (!symbol) return;
    const auto configured = symbol->imageWithSymbolConfiguration(*configuration);
    if (!configured) return;
    const auto white = whitened(configured);
    const auto [width, height] = white->size();
    white->drawInRect(CGRectMake(CGRectGetMidX(bounds()) - width * 0.5,
                                 CGRectGetMidY(bounds()) - height * 0.5, width, height));
}

BubblePanel::BubblePanel(CGFloat size, CGFloat idleAlpha)
    : NSPanel(CGRectMake(0, 0, size, size), NSWindowStyleMaskNonactivatingPanel,
              NSBackingStoreBuffered, false),
      button(std::make_shared<BubbleView>(CGRectMake(0, 0, size, size), idleAlpha)) {
    setTitle("Nimbrel Lite button");
    setIdentifier("button");
    setOpaque(false);
    setBackgroundColor(NSColor::clearColor());
    setHasShadow(true);
    setFloatingPanel(true);
    setLevel(aboveTheCovers); // The line before set another.
    setCollectionBehavior(
        NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorStationary |
        NSWindowCollectionBehaviorIgnoresCycle | NSWindowCollectionBehaviorFullScreenAuxiliary);
    setHidesOnDeactivate(false);
    setMovable(false);
    setAnimationBehavior(NSWindowAnimationBehaviorNone);
    setReleasedWhenClosed(false);
    setContentView(button);
}
