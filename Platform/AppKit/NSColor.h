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

    /// Text of the second rank: dark in light windows, light in dark ones.
    static NSColor secondaryLabelColor() { return NSColor({}, true); }

    NSColor colorWithAlphaComponent(double alpha) const {
        return NSColor({m_color.red, m_color.green, m_color.blue, alpha});
    }

    /// As it is in the windows at this moment.
    ::CGColor CGColor() const;

    bool operator==(const NSColor&) const = default;

    // The colour of the drawing that follows, until the view has been drawn.
    void setFill() const;
    void setStroke() const;
    void set() const; ///< Both.

private:
    explicit NSColor(const ::CGColor& color, bool secondaryLabel = false)
        : m_color(color), m_secondaryLabel(secondaryLabel) {}

    ::CGColor m_color;
    bool m_secondaryLabel; ///< The components do not count then.
};
