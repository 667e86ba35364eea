#pragma once

#include "SwiftUI/Qt/Environment.h"
#include "SwiftUI/View.h"

#include <QPainterPath>

using Painting = std::function<void(QPainter&, const QRectF&, const Environment&)>;

/// A view that is nothing but what is painted. It fills its room, but for a height of its own.
View painted(Painting painting, std::optional<double> height = std::nullopt);

/// A rectangle whose corners bend gradually: each begins a little before a circle of that radius
/// would, and passes through the middle of that circle's arc.
QPainterPath continuousCorners(const QRectF& rect, double radius);
