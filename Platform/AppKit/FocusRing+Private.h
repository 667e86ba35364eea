#pragma once

#include <QPainter>

/// How far a control's widget reaches beyond the control, so that the ring finds room around it.
inline constexpr int focusRingMargin = 3;

/// Around a control with such corners, a point away from it.
void drawFocusRing(QPainter& painter, const QRectF& control, double radius, const QColor& color);
