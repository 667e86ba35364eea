#include "SwiftUI/Element+Private.h"

#include <QRect>

#include <algorithm>

QSizeF Element::sizeThatFits(const Proposal& proposal) const {
    const auto known = std::find_if(m_measured.begin(), m_measured.end(),
                                    [&](const auto& each) { return each.first == proposal; });
    if (known != m_measured.end()) return known->second;
    const QSizeF size = measure(proposal);
    m_measured.emplace_back(proposal, size);
    return size;
}

QRect wholePoints(const QRectF& rect) {
    const QPoint topLeft(qRound(rect.left()), qRound(rect.top()));
    const QPoint bottomRight(qRound(rect.right()), qRound(rect.bottom()));
    return {topLeft, QSize(bottomRight.x() - topLeft.x(), bottomRight.y() - topLeft.y())};
}
