#include "AppKit/NSBezierPath.h"

#include "AppKit/Qt/Drawing/NSGraphicsContext.h"

std::shared_ptr<NSBezierPath> NSBezierPath::bezierPathWithOvalInRect(const NSRect& rect) {
    return std::shared_ptr<NSBezierPath>(new NSBezierPath(rect));
}

void NSBezierPath::fill() const {
    auto* context = NSGraphicsContext::currentContext();
    if (!context) return;
    context->painter().setPen(Qt::NoPen);
    context->painter().setBrush(context->fill);
    context->painter().drawEllipse(rectFrom(m_oval));
}

void NSBezierPath::stroke() const {
    auto* context = NSGraphicsContext::currentContext();
    if (!context) return;
    context->painter().setPen(QPen(context->stroke, m_lineWidth));
    context->painter().setBrush(Qt::NoBrush);
    context->painter().drawEllipse(rectFrom(m_oval));
}
