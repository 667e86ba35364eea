#include "AppKit/Animation+Private.h"

#include "AppKit/NSAnimationContext.h"
#include "Foundation/Timeline+Private.h"

namespace {

constexpr double frameSeconds = 1.0 / 60;

/// A cubic Bezier curve from 0 to 1 with the inner control values a and b.
double bezier(double a, double b, double t) {
    const double s = 1 - t;
    return 3 * s * s * t * a + 3 * s * t * t * b + t * t * t;
}

} // namespace

double progressAt(double time, const CAMediaTimingFunction* pace) {
    if (!pace || time <= 0 || time >= 1) return time;
    float first[2];
    float second[2];
    pace->getControlPointAtIndex(1, first);
    pace->getControlPointAtIndex(2, second);
    // The curve's time grows with its parameter, so halving closes in on the parameter.
    double low = 0;
    double high = 1;
    for (int i = 0; i < 30; ++i) {
        const double middle = (low + high) / 2;
        (bezier(first[0], second[0], middle) < time ? low : high) = middle;
    }
    return bezier(first[1], second[1], low);
}

Animation::Animation(std::function<void(double)> apply)
    : m_apply(std::move(apply)), m_duration(NSAnimationContext::currentContext().duration()),
      m_pace(NSAnimationContext::currentContext().timingFunction()),
      m_start(Timeline::current().now()) {
    m_nextFrame = Timeline::current().schedule(0, [this] { step(); });
}

void Animation::step() {
    const double elapsed = Timeline::current().now() - m_start;
    if (elapsed >= m_duration) {
        m_nextFrame.reset();
        m_apply(1);
        return;
    }
    m_nextFrame = Timeline::current().schedule(frameSeconds, [this] { step(); });
    m_apply(progressAt(elapsed / m_duration, m_pace.get()));
}
