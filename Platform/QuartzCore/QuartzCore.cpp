#include "QuartzCore/QuartzCore.h"

#include <QEasingCurve>
#include <QPointF>

namespace {

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
