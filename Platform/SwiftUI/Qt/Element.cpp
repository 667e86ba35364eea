#include "SwiftUI/Qt/Element.h"

#include "SwiftUI/Qt/ViewNode.h"

#include <algorithm>

Element::Element(const View& view, const Surroundings& surroundings) : m_view(view) {
    m_view.node().realise(*this, surroundings);
}

QSizeF Element::sizeThatFits(const Proposal& proposal) const {
    const auto known = std::find_if(m_measured.begin(), m_measured.end(),
                                    [&](const auto& each) { return each.first == proposal; });
    if (known != m_measured.end()) return known->second;
    const QSizeF size = m_view.node().measure(*this, proposal);
    m_measured.emplace_back(proposal, size);
    return size;
}

void Element::place(const QRectF& rect) const { m_view.node().place(*this, rect); }

bool Element::isSpacer() const { return m_view.node().isSpacer(); }

void Element::hold(QWidget& widget, const Environment& environment) {
    m_widget = &widget;
    widget.setAccessibleName(QString::fromStdString(environment.accessibilityLabel));
    widget.setAccessibleDescription(QString::fromStdString(environment.accessibilityHint));
}

QRect wholePoints(const QRectF& rect) {
    const QPoint topLeft(qRound(rect.left()), qRound(rect.top()));
    const QPoint bottomRight(qRound(rect.right()), qRound(rect.bottom()));
    return {topLeft, QSize(bottomRight.x() - topLeft.x(), bottomRight.y() - topLeft.y())};
}
