// Outlines that fill the room they are offered. Their corners are continuous: they bend gradually.
#pragma once

#include "SwiftUI/View.h"

#include <limits>

class Shape {
public:
    View fill(const Color& color) const;

protected:
    /// A corner bends no further than to the middle of the shorter side.
    explicit Shape(double cornerRadius) : m_cornerRadius(cornerRadius) {}

private:
    double m_cornerRadius;
};

struct Rectangle : Shape {
    Rectangle() : Shape(0) {}
};

struct RoundedRectangle : Shape {
    struct Options {
        double cornerRadius;
    };
    explicit RoundedRectangle(const Options& options) : Shape(options.cornerRadius) {}
};

/// Its ends are round.
struct Capsule : Shape {
    Capsule() : Shape(std::numeric_limits<double>::infinity()) {}
};
