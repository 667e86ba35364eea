#include "AppKit/CAMediaTimingFunction.h"

std::shared_ptr<CAMediaTimingFunction>
CAMediaTimingFunction::functionWithName(const CAMediaTimingFunctionName& name) {
    if (name != kCAMediaTimingFunctionEaseOut) return nullptr;
    const Points easeOut = {{{0, 0}, {0, 0}, {0.58F, 1}, {1, 1}}};
    return std::shared_ptr<CAMediaTimingFunction>(new CAMediaTimingFunction(easeOut));
}

void CAMediaTimingFunction::getControlPointAtIndex(size_t index, float (&values)[2]) const {
    values[0] = m_points.at(index)[0];
    values[1] = m_points.at(index)[1];
}
