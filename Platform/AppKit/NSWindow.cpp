#include "AppKit/NSWindow.h"

#include "AppKit/NSVisualEffectView.h"
#include "WindowServer/Session.h"

#include <algorithm>

using WindowServer::Look;
using WindowServer::Session;

namespace {

CGColor blend(const CGColor& over, const CGColor& under) {
    const double alpha = over.alpha + under.alpha * (1 - over.alpha);
    if (alpha == 0) return {};
    const auto mix = [&](double front, double back) {
        return (front * over.alpha + back * under.alpha * (1 - over.alpha)) / alpha;
    };
    return {mix(over.red, under.red), mix(over.green, under.green), mix(over.blue, under.blue),
            alpha};
}

bool covers(const NSRect& frame, const NSSize& window) {
    return frame.origin.x <= 0 && frame.origin.y <= 0 &&
           frame.origin.x + frame.size.width >= window.width &&
           frame.origin.y + frame.size.height >= window.height;
}

/// Lays a view and what stands in front of it over `look`. `origin` is the superview's, in the
/// window. A view that leaves part of the window free has no place in the one colour.
void lay(const NSView& view, NSPoint origin, const NSSize& window, Look& look) {
    if (view.isHidden()) return;
    NSRect frame = view.frame();
    frame.origin.x += origin.x;
    frame.origin.y += origin.y;
    if (covers(frame, window)) {
        if (dynamic_cast<const NSVisualEffectView*>(&view))
            look = {.material = true, .overlay = {}}; // It hides all that lies behind.
        if (view.layer()) look.overlay = blend(view.layer()->backgroundColor(), look.overlay);
    }
    for (const auto& subview : view.subviews())
        lay(*subview, frame.origin, window, look);
}

} // namespace

NSWindow::NSWindow(const NSRect& contentRect, NSUInteger, NSBackingStoreType, bool)
    : m_surface(Session::current().makeSurface()), m_frame(contentRect) {
    m_surface->setFrame(m_frame);
    m_surface->setAlpha(m_alphaValue);
}

NSWindow::~NSWindow() { setContentView(nullptr); }

NSInteger NSWindow::windowNumber() const { return m_surface->number(); }

void NSWindow::setTitle(const std::string& title) {
    if (m_title == title) return;
    m_title = title;
    m_surface->setTitle(title);
}

void NSWindow::setFrame(const NSRect& frame, bool) {
    if (CGRectEqualToRect(m_frame, frame)) return;
    m_frame = frame;
    m_surface->setFrame(frame);
    if (m_contentView) m_contentView->setFrame({{}, frame.size});
}

void NSWindow::setLevel(NSInteger level) {
    if (m_level == level) return;
    m_level = level;
    m_surface->setLevel(static_cast<int>(level));
}

void NSWindow::setAlphaValue(double alpha) {
    alpha = std::clamp(alpha, 0.0, 1.0);
    if (m_alphaValue == alpha) return;
    m_alphaValue = alpha;
    m_surface->setAlpha(alpha);
}

void NSWindow::setIgnoresMouseEvents(bool ignores) {
    if (m_ignoresMouseEvents == ignores) return;
    m_ignoresMouseEvents = ignores;
    m_surface->setIgnoresMouseEvents(ignores);
}

void NSWindow::setBackgroundColor(const NSColor& color) {
    m_backgroundColor = color;
    setViewsNeedDisplay(true);
}

void NSWindow::setContentView(std::shared_ptr<NSView> view) {
    if (m_contentView) m_contentView->viewWillMoveToWindow(nullptr);
    m_contentView = std::move(view);
    if (!m_contentView) return;
    m_contentView->viewWillMoveToWindow(this);
    m_contentView->setFrame({{}, m_frame.size});
    setViewsNeedDisplay(true);
}

void NSWindow::setViewsNeedDisplay(bool needDisplay) {
    if (!needDisplay) return;
    Look look{.material = false, .overlay = m_backgroundColor.CGColor()};
    if (m_contentView) lay(*m_contentView, {}, m_frame.size, look);
    m_surface->setLook(look);
}

void NSWindow::orderFrontRegardless() { m_surface->orderFront(); }

void NSWindow::orderOut(const id&) { m_surface->orderOut(); }
