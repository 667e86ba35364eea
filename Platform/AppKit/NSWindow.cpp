#include "AppKit/NSWindow.h"

#include "AppKit/Animation+Private.h"
#include "AppKit/NativeWindow+Private.h"

#include <algorithm>
#include <utility>

NSWindow::NSWindow(const NSRect& contentRect, NSUInteger styleMask, NSBackingStoreType, bool)
    : m_native(NativeWindow::make(*this, styleMask)), m_frame(contentRect) {
    m_native->setFrame(m_frame);
    m_native->setAlpha(m_alphaValue);
}

NSWindow::~NSWindow() { setContentView(nullptr); }

NSInteger NSWindow::windowNumber() const { return m_native->number(); }

void NSWindow::setTitle(const std::string& title) {
    if (m_title == title) return;
    m_title = title;
    m_native->setTitle(title);
}

void NSWindow::setFrame(const NSRect& frame, bool) {
    m_move.reset();
    moveTo(frame);
}

void NSWindow::setFrameOrigin(const NSPoint& origin) { setFrame({origin, m_frame.size}, false); }

void NSWindow::moveTo(const NSRect& frame) {
    if (CGRectEqualToRect(m_frame, frame)) return;
    m_frame = frame;
    m_native->setFrame(frame);
    if (m_contentView) m_contentView->setFrame({{}, frame.size});
}

void NSWindow::setLevel(NSInteger level) {
    if (m_level == level) return;
    m_level = level;
    m_native->setLevel(level);
}

void NSWindow::setAlphaValue(double alpha) {
    m_fade.reset();
    fadeTo(alpha);
}

void NSWindow::fadeTo(double alpha) {
    alpha = std::clamp(alpha, 0.0, 1.0);
    if (m_alphaValue == alpha) return;
    m_alphaValue = alpha;
    m_native->setAlpha(alpha);
}

void NSWindow::Animator::setFrameOrigin(const NSPoint& origin) {
    NSWindow& window = m_window;
    window.m_move = std::make_unique<Animation>([&window, from = window.m_frame.origin,
                                                 origin](double progress) {
        const auto between = [progress](double a, double b) { return a + (b - a) * progress; };
        const NSPoint point =
            progress < 1 ? NSPoint{between(from.x, origin.x), between(from.y, origin.y)} : origin;
        window.moveTo({point, window.m_frame.size});
    });
}

void NSWindow::Animator::setAlphaValue(double alpha) {
    NSWindow& window = m_window;
    window.m_fade =
        std::make_unique<Animation>([&window, from = window.m_alphaValue, alpha](double progress) {
            window.fadeTo(progress < 1 ? from + (alpha - from) * progress : alpha);
        });
}

void NSWindow::setIgnoresMouseEvents(bool ignores) {
    if (m_ignoresMouseEvents == ignores) return;
    m_ignoresMouseEvents = ignores;
    m_native->setIgnoresMouseEvents(ignores);
}

void NSWindow::setBackgroundColor(const NSColor& color) {
    m_backgroundColor = color;
    setViewsNeedDisplay(true);
}

void NSWindow::setContentView(std::shared_ptr<NSView> view) {
    if (const auto former = std::exchange(m_contentView, std::move(view))) {
        former->viewWillMoveToWindow(nullptr);
        former->viewDidMoveToWindow();
    }
    if (!m_contentView) return;
    m_contentView->viewWillMoveToWindow(this);
    m_contentView->setFrame({{}, m_frame.size});
    m_contentView->viewDidMoveToWindow();
    setViewsNeedDisplay(true);
    viewTextsChanged();
}

void NSWindow::setViewsNeedDisplay(bool needDisplay) {
    if (needDisplay) m_native->displayViews();
}

void NSWindow::viewTextsChanged() { m_native->describeViews(); }

void NSWindow::orderFrontRegardless() { m_native->orderFront(); }

void NSWindow::orderOut(const id&) { m_native->orderOut(); }
