#include "AppKit/NSGraphics.h"
#include "AppKit/Qt/Drawing/Symbol.h"
#include "AppKit/Qt/Windows/Coordinates.h"

#include <QPainterPath>

namespace {

QColor colorFrom(const CGColor& color) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

QPainterPath pathOf(const NSRect& oval) {
    QPainterPath path;
    path.addEllipse(rectFrom(oval));
    return path;
}

} // namespace

QPainter* thePainter = nullptr;

void NSColor::setFill() const {
    if (thePainter) thePainter->setBrush(colorFrom(CGColor()));
}

void NSColor::setStroke() const {
    if (thePainter) thePainter->setPen(colorFrom(CGColor()));
}

void NSColor::set() const {
    setFill();
    setStroke();
}

std::shared_ptr<NSBezierPath> NSBezierPath::bezierPathWithOvalInRect(const NSRect& rect) {
    return std::shared_ptr<NSBezierPath>(new NSBezierPath(rect));
}

void NSBezierPath::fill() const {
    if (thePainter) thePainter->fillPath(pathOf(m_oval), thePainter->brush());
}

void NSBezierPath::stroke() const {
    if (!thePainter) return;
    thePainter->strokePath(pathOf(m_oval), QPen(thePainter->pen().color(), m_lineWidth));
}

void NSRectFillUsingOperation(const NSRect& rect, NSCompositingOperation) {
    if (!thePainter) return;
    thePainter->setCompositionMode(QPainter::CompositionMode_SourceAtop);
    thePainter->fillRect(rectFrom(rect), thePainter->brush());
    thePainter->setCompositionMode(QPainter::CompositionMode_SourceOver);
}
