#include "AppKit/NSGraphics.h"
#include "AppKit/Qt/Drawing/Symbol.h"
#include "AppKit/Qt/Windows/Coordinates.h"

#include <QGuiApplication>
#include <QPainterPath>
#include <QPalette>

namespace {

QPainterPath pathOf(const NSRect& oval) {
    QPainterPath path;
    path.addEllipse(rectFrom(oval));
    return path;
}

} // namespace

QPainter* thePainter = nullptr;

::CGColor NSColor::CGColor() const {
    if (!m_secondaryLabel) return m_color;
    const QColor color = QGuiApplication::palette().color(QPalette::PlaceholderText);
    return {color.redF(), color.greenF(), color.blueF(), color.alphaF()};
}

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
