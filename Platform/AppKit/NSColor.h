#pragma once

#include "CoreGraphics/CGColor.h"

/// An immutable colour. Components run from 0 to 1.
class NSColor {
public:
    static NSColor clearColor() { return NSColor({}); }
    static NSColor whiteColor() { return NSColor({1, 1, 1, 1}); }
    static NSColor colorWithWhite(double white, double alpha) {
        return NSColor({white, white, white, alpha});
    }
    static NSColor colorWithSRGBRed(double red, double green, double blue, double alpha) {
        return NSColor({red, green, blue, alpha});
    }

    NSColor colorWithAlphaComponent(double alpha) const {
        return NSColor({m_color.red, m_color.green, m_color.blue, alpha});
    }

    ::CGColor CGColor() const { return m_color; }

    // What the drawing after it is done with, until the view has been drawn.
    void setFill() const;
    void setStroke() const;
    void set() const; ///< Both.

private:
    explicit NSColor(const ::CGColor& color) : m_color(color) {}

    ::CGColor m_color;
};
