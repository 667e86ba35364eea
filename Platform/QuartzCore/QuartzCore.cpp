#include "QuartzCore/QuartzCore.h"

#include "Foundation/Timeline+Private.h"
#include "QuartzCore/Animation+Private.h"

#include <QEasingCurve>
#include <QPointF>

namespace {

constexpr double frameSeconds = 1.0 / 60;

QEasingCurve easeOut() {
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0, 0}, {0.58, 1}, {1, 1});
    return curve;
}

} // namespace

void CALayer::setBackgroundColor(const CGColor& color) {
    if (m_backgroundColor == color) return;
    m_backgroundColor = color;
    m_display();
}

std::shared_ptr<CAMediaTimingFunction>
CAMediaTimingFunction::functionWithName(const CAMediaTimingFunctionName& name) {
    return name == kCAMediaTimingFunctionEaseOut ? std::make_shared<CAMediaTimingFunction>()
                                                 : nullptr;
}

double CAMediaTimingFunction::progressAt(double time) const {
    static const QEasingCurve curve = easeOut();
    return curve.valueForProgress(time);
}

Animation::Animation(double duration, std::shared_ptr<CAMediaTimingFunction> pace,
                     std::function<void(double)> apply)
    : m_duration(duration), m_pace(std::move(pace)), m_apply(std::move(apply)),
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
    const double time = elapsed / m_duration;
    m_apply(m_pace ? m_pace->progressAt(time) : time);
}
