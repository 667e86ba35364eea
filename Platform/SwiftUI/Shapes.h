// Outlines that fill the room they are offered. Their corners are continuous: they bend gradually.
#pragma once

#include "SwiftUI/View.h"

class Shape {
public:
    enum class Kind { rectangle, roundedRectangle, capsule };

    View fill(const Color& color) const;

    Kind kind() const { return m_kind; }
    /// Of the rounded rectangle.
    double cornerRadius() const { return m_cornerRadius; }

protected:
    explicit Shape(Kind kind, double cornerRadius = 0)
        : m_kind(kind), m_cornerRadius(cornerRadius) {}

private:
    Kind m_kind;
    double m_cornerRadius;
};

struct Rectangle : Shape {
    Rectangle() : Shape(Kind::rectangle) {}
};

struct RoundedRectangle : Shape {
    struct Options {
        double cornerRadius;
    };
    explicit RoundedRectangle(const Options& options)
        : Shape(Kind::roundedRectangle, options.cornerRadius) {}
};

/// Its ends are round.
struct Capsule : Shape {
    Capsule() : Shape(Kind::capsule) {}
};
