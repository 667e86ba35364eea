#pragma once

#include "CoreGraphics/CGColor.h"
#include "Foundation/NSObject.h"

#include <string>

/// The colour of a view.
class CALayer : public NSObject {
public:
    /// Calls `display` as its looks have changed.
    explicit CALayer(std::function<void()> display) : m_display(std::move(display)) {}

    /// Clear until it is set.
    const CGColor& backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const CGColor& color) {
        m_backgroundColor = color;
        m_display();
    }

private:
    const std::function<void()> m_display;
    CGColor m_backgroundColor;
};

using CAMediaTimingFunctionName = std::string;

/// Quick at first, slower and slower towards the end.
inline const CAMediaTimingFunctionName kCAMediaTimingFunctionEaseOut = "easeOut";

/// The pace of an animation.
class CAMediaTimingFunction : public NSObject {
public:
    /// There is the one name.
    static std::shared_ptr<CAMediaTimingFunction>
    functionWithName(const CAMediaTimingFunctionName&) {
        return std::make_shared<CAMediaTimingFunction>();
    }

    /// The progress, from 0 to 1, at a part of the time, from 0 to 1.
    double progressAt(double time) const;
};
