// Points, sizes and rectangles, in points unless a name says pixels. The y axis points up.
#pragma once

using CGFloat = double;

struct CGPoint {
    double x = 0;
    double y = 0;
    bool operator==(const CGPoint&) const = default;
};

struct CGSize {
    double width = 0;
    double height = 0;
    bool operator==(const CGSize&) const = default;
};

struct CGRect {
    CGPoint origin;
    CGSize size;
    bool operator==(const CGRect&) const = default;
};

constexpr CGRect CGRectMake(double x, double y, double width, double height) {
    return {{x, y}, {width, height}};
}

constexpr double CGRectGetMinX(const CGRect& rect) { return rect.origin.x; }
constexpr double CGRectGetMidX(const CGRect& rect) { return rect.origin.x + rect.size.width / 2; }
constexpr double CGRectGetMaxX(const CGRect& rect) { return rect.origin.x + rect.size.width; }
constexpr double CGRectGetMinY(const CGRect& rect) { return rect.origin.y; }
constexpr double CGRectGetMidY(const CGRect& rect) { return rect.origin.y + rect.size.height / 2; }
constexpr double CGRectGetMaxY(const CGRect& rect) { return rect.origin.y + rect.size.height; }
constexpr double CGRectGetWidth(const CGRect& rect) { return rect.size.width; }
constexpr double CGRectGetHeight(const CGRect& rect) { return rect.size.height; }

/// Smaller by `dx` at the left and the right and by `dy` at the top and the bottom.
constexpr CGRect CGRectInset(const CGRect& rect, double dx, double dy) {
    return CGRectMake(rect.origin.x + dx, rect.origin.y + dy, rect.size.width - 2 * dx,
                      rect.size.height - 2 * dy);
}

/// The sides where x and y are least are within, the others are not.
constexpr bool CGRectContainsPoint(const CGRect& rect, const CGPoint& point) {
    return point.x >= CGRectGetMinX(rect) && point.x < CGRectGetMaxX(rect) &&
           point.y >= CGRectGetMinY(rect) && point.y < CGRectGetMaxY(rect);
}

constexpr bool CGRectEqualToRect(const CGRect& a, const CGRect& b) { return a == b; }
