#pragma once

#include "CoreGraphics/CGColor.h"

/// An immutable colour. Components run from 0 to 1.
class NSColor {
public:
    static NSColor clearColor() { return NSColor({}); }
    static NSColor colorWithWhite(double white, double alpha) {
        return NSColor({white, white, white, alpha});
    }
    static NSColor colorWithSRGBRed(double red, double green, double blue, double alpha) {
        return NSColor({red, green, blue, alpha});
    }

    ::CGColor CGColor() const { return m_color; }

private:
    explicit NSColor(const ::CGColor& color) : m_color(color) {}

    ::CGColor m_color;
};
