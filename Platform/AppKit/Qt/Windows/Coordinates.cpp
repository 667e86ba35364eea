#include "AppKit/Qt/Windows/Coordinates.h"

#include "WindowServer/Session.h"

#include <cmath>

namespace {

/// The platform's origin in the toolkit's coordinates, which keep device pixels for the corners of
/// screens and points within them.
QPointF origin() {
    const auto& displays = WindowServer::Session::current().displays().all();
    if (displays.empty()) return {};
    const auto& first = displays.front();
    return {static_cast<double>(first.pixels.x), first.pixels.y + first.frame.size.height};
}

int rounded(double value) { return static_cast<int>(std::lround(value)); }

} // namespace

NSPoint pointFrom(const QPointF& point) {
    const QPointF zero = origin();
    return {point.x() - zero.x(), zero.y() - point.y()};
}

QRect rectOf(const NSRect& rect) {
    const QPointF zero = origin();
    return {rounded(zero.x() + rect.origin.x), rounded(zero.y() - rect.origin.y - rect.size.height),
            rounded(rect.size.width), rounded(rect.size.height)};
}

NSRect frameOf(const QRect& rect) {
    const QPointF zero = origin();
    return CGRectMake(rect.x() - zero.x(), zero.y() - rect.y() - rect.height(), rect.width(),
                      rect.height());
}

QRectF rectFrom(const NSRect& rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

NSEvent eventOf(NSEventType type, Qt::KeyboardModifiers modifiers,
                std::optional<NSPoint> location) {
    const bool control = modifiers & Qt::ControlModifier;
    return {type, control ? NSUInteger{NSEventModifierFlagControl} : 0, location};
}
