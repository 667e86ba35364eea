// What views draw with.
#pragma once

#include "CoreGraphics/CGColor.h"
#include "Foundation/Foundation.h"

#include <any>

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

    /// Of text of the second rank, in credits: the palette's tone for it. Not to draw in.
    static NSColor secondaryLabelColor() { return NSColor({}, true); }

    NSColor colorWithAlphaComponent(double alpha) const {
        return NSColor({m_color.red, m_color.green, m_color.blue, alpha});
    }

    const ::CGColor& CGColor() const { return m_color; }

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

/// The desktop's own typeface in a size.
class NSFont {
public:
    /// The size is in points.
    static NSFont systemFontOfSize(double size) { return NSFont(size); }
    double pointSize() const { return m_pointSize; }

private:
    explicit NSFont(double size) : m_pointSize(size) {}

    double m_pointSize;
};

using NSAttributedStringKey = std::string;

inline const NSAttributedStringKey NSFontAttributeName = "NSFont";             ///< An NSFont.
inline const NSAttributedStringKey NSForegroundColorAttributeName = "NSColor"; ///< An NSColor.

/// A text, and how all of it looks.
class NSAttributedString : public NSObject {
public:
    using Attributes = std::map<NSAttributedStringKey, std::any>;

    NSAttributedString(std::string string, Attributes attributes)
        : m_string(std::move(string)), m_attributes(std::move(attributes)) {}
    const std::string& string() const { return m_string; }
    const Attributes& attributes() const { return m_attributes; }

private:
    std::string m_string;
    Attributes m_attributes;
};

/// An outline to fill or to stroke in the colours that were set: an oval.
class NSBezierPath : public NSObject {
public:
    /// The oval that touches the rectangle's sides.
    static std::shared_ptr<NSBezierPath> bezierPathWithOvalInRect(const NSRect& rect);

    void fill() const;

    void setLineWidth(double width) { m_lineWidth = width; }
    /// The line runs along the middle of the outline.
    void stroke() const;

private:
    explicit NSBezierPath(const NSRect& oval) : m_oval(oval) {}

    NSRect m_oval;
    double m_lineWidth = 1;
};

enum NSCompositingOperation : NSUInteger {
    NSCompositingOperationSourceAtop = 5, ///< Only where something stands already.
};

/// Fills in the colour that was set.
void NSRectFillUsingOperation(const NSRect& rect, NSCompositingOperation operation);
