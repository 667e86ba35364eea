#include "QuartzCore/CAMediaTimingFunction.h"

#include <QEasingCurve>
#include <QPointF>

namespace {

QEasingCurve easeOut() {
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0, 0}, {0.58, 1}, {1, 1});
    return curve;
}

} // namespace

std::shared_ptr<CAMediaTimingFunction>
CAMediaTimingFunction::functionWithName(const CAMediaTimingFunctionName& name) {
    if (name != kCAMediaTimingFunctionEaseOut) return nullptr;
    return std::shared_ptr<CAMediaTimingFunction>(new CAMediaTimingFunction);
}

double CAMediaTimingFunction::progressAt(double time) const {
    static const QEasingCurve curve = easeOut();
    return curve.valueForProgress(time);
}
