#pragma once

#include "Foundation/Foundation.h"

#include <memory>

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
