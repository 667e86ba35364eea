#include "AppKit/Qt/Windows/SurfaceWindow.h"

#include "AppKit/NSView.h"

using WindowServer::Look;

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

void SurfaceWindow::displayViews() {
    Look look{.material = false, .overlay = m_window.backgroundColor().CGColor()};
    if (m_window.contentView()) lay(*m_window.contentView(), {}, m_window.frame().size, look);
    m_surface->setLook(look);
}
