#include "AppKit/FocusRing+Private.h"

void drawFocusRing(QPainter& painter, const QRectF& control, double radius, const QColor& color) {
    constexpr double width = 2;
    constexpr double distance = 1 + width / 2;
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(control.adjusted(-distance, -distance, distance, distance),
                            radius + distance, radius + distance);
}
