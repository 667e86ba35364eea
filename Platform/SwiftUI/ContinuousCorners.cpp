#include "SwiftUI/ContinuousCorners+Private.h"

#include <algorithm>
#include <cmath>

QPainterPath continuousCorners(const QRectF& rect, double radius) {
    constexpr double earlier = 1.28;
    const double room = std::min(rect.width(), rect.height()) / 2;
    radius = std::min(radius, room);
    const double reach = std::min(earlier * radius, room);
    // A cubic curve whose middle lies where the arc's does.
    const double control = (8 * (1 - std::sqrt(0.5)) * radius - reach) / 3;

    QPainterPath path;
    const auto corner = [&](const QPointF& at, const QPointF& from, const QPointF& to) {
        path.lineTo(at + reach * from);
        path.cubicTo(at + control * from, at + control * to, at + reach * to);
    };
    const QPointF left(-1, 0);
    const QPointF right(1, 0);
    const QPointF up(0, -1);
    const QPointF down(0, 1);
    path.moveTo(rect.topLeft() + reach * right);
    corner(rect.topRight(), left, down);
    corner(rect.bottomRight(), up, left);
    corner(rect.bottomLeft(), right, up);
    corner(rect.topLeft(), down, right);
    path.closeSubpath();
    return path;
}
