#include "QuartzCore/QuartzCore.h"

#include <QEasingCurve>
#include <QPointF>

double CAMediaTimingFunction::progressAt(double time) const {
    QEasingCurve easeOut(QEasingCurve::BezierSpline);
    easeOut.addCubicBezierSegment({0, 0}, {0.58, 1}, {1, 1});
    return easeOut.valueForProgress(time);
}
