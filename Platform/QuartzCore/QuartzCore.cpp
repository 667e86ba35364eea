#include "QuartzCore/QuartzCore.h"

#include <QEasingCurve>
#include <QPointF>

std::shared_ptr<CAMediaTimingFunction>
CAMediaTimingFunction::functionWithName(const CAMediaTimingFunctionName& name) {
    return name == kCAMediaTimingFunctionEaseOut ? std::make_shared<CAMediaTimingFunction>()
                                                 : nullptr;
}

double CAMediaTimingFunction::progressAt(double time) const {
    QEasingCurve easeOut(QEasingCurve::BezierSpline);
    easeOut.addCubicBezierSegment({0, 0}, {0.58, 1}, {1, 1});
    return easeOut.valueForProgress(time);
}
