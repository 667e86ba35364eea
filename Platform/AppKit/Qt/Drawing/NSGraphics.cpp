#include "AppKit/NSGraphics.h"
#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "AppKit/Qt/Drawing/NSGraphicsContext.h"

#include <QGuiApplication>

namespace {

// Contrasts of 5.9 to 1 and 7.6 to 1 with the windows' own light and dark.
constexpr ::CGColor darkSecondary = {0, 0, 0, 0.6};
constexpr ::CGColor lightSecondary = {1, 1, 1, 0.6};

NSGraphicsContext* theContext = nullptr;

} // namespace

::CGColor NSColor::CGColor() const {
    if (!m_secondaryLabel) return m_color;
    return isDark(QGuiApplication::palette()) ? lightSecondary : darkSecondary;
}

void NSColor::setFill() const {
    if (auto* context = NSGraphicsContext::currentContext()) context->fill = colorFrom(CGColor());
}

void NSColor::setStroke() const {
    if (auto* context = NSGraphicsContext::currentContext()) context->stroke = colorFrom(CGColor());
}

void NSColor::set() const {
    setFill();
    setStroke();
}

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

void NSRectFillUsingOperation(const NSRect& rect, NSCompositingOperation) {
    auto* context = NSGraphicsContext::currentContext();
    if (!context) return;
    QPainter& painter = context->painter();
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.fillRect(rectFrom(rect), context->fill);
    painter.restore();
}

QColor colorFrom(const CGColor& color) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

QRectF rectFrom(const NSRect& rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

NSGraphicsContext::NSGraphicsContext(QPainter& painter)
    : m_painter(painter), m_outer(std::exchange(theContext, this)) {}
NSGraphicsContext::~NSGraphicsContext() { theContext = m_outer; }
NSGraphicsContext* NSGraphicsContext::currentContext() { return theContext; }
