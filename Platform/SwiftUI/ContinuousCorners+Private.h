#pragma once

#include <QPainterPath>

/// A rectangle whose corners bend gradually: each begins a little before a circle of that radius
/// would, and passes through the middle of that circle's arc.
QPainterPath continuousCorners(const QRectF& rect, double radius);
