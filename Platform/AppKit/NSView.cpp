#include "AppKit/NSView.h"

#include "AppKit/NSWindow.h"

#include <algorithm>

NSView::~NSView() {
    for (const auto& view : m_subviews)
        view->m_superview = nullptr;
}

void NSView::setFrame(const NSRect& frame) {
    if (CGRectEqualToRect(m_frame, frame)) return;
    m_frame = frame;
    setNeedsDisplay(true);
}

void NSView::addSubview(std::shared_ptr<NSView> view, NSWindowOrderingMode positioned,
                        const std::shared_ptr<NSView>& relativeTo) {
    auto place = std::find(m_subviews.begin(), m_subviews.end(), relativeTo);
    if (positioned == NSWindowAbove && place != m_subviews.end()) ++place;
    view->m_superview = this;
    const auto added = *m_subviews.insert(place, std::move(view));
    if (window()) added->viewDidMoveToWindow();
    setNeedsDisplay(true);
}

void NSView::setHidden(bool hidden) {
    if (m_hidden == hidden) return;
    m_hidden = hidden;
    setNeedsDisplay(true);
}

void NSView::setWantsLayer(bool wantsLayer) {
    m_layer = wantsLayer ? std::make_shared<CALayer>([this] { setNeedsDisplay(true); }) : nullptr;
    setNeedsDisplay(true);
}

NSWindow* NSView::window() const { return m_superview ? m_superview->window() : m_window; }

void NSView::viewDidMoveToWindow() {
    for (const auto& view : m_subviews)
        view->viewDidMoveToWindow();
}

void NSView::textsChanged() const {
    if (NSWindow* const target = window()) target->textsChanged();
}

void NSView::setNeedsDisplay(bool needsDisplay) {
    NSWindow* const target = window();
    if (needsDisplay && target) target->setViewsNeedDisplay(true);
}
