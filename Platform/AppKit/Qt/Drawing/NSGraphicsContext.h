#pragma once

#include "CoreGraphics/CGColor.h"
#include "Foundation/NSObject.h"

#include <QColor>
#include <QPainter>

QColor colorFrom(const CGColor& color);
/// In the same coordinates.
QRectF rectFrom(const NSRect& rect);

/// Where `NSColor`, `NSBezierPath` and `NSImage` draw: the newest one that lives.
class NSGraphicsContext {
public:
    /// The painter's coordinates are the view's.
    explicit NSGraphicsContext(QPainter& painter);
    ~NSGraphicsContext();
    NSGraphicsContext(const NSGraphicsContext&) = delete;
    NSGraphicsContext& operator=(const NSGraphicsContext&) = delete;

    /// Null where nothing is being drawn.
    static NSGraphicsContext* currentContext();

    QPainter& painter() { return m_painter; }
    QColor fill = Qt::black;
    QColor stroke = Qt::black;

private:
    QPainter& m_painter;
    NSGraphicsContext* const m_outer;
};
