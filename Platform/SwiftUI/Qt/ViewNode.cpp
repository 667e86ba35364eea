#include "SwiftUI/Qt/ViewNode.h"

void WidgetPool::begin() { m_before = std::exchange(m_now, {}); }

void WidgetPool::end() {
    for (const QPointer<QWidget>& widget : std::exchange(m_before, {})) {
        if (!widget) continue;
        widget->hide();
        // It may be the one whose press has led here.
        widget->deleteLater();
    }
    QWidget* last = nullptr;
    for (const QPointer<QWidget>& widget : m_now) {
        widget->raise();
        if (widget->focusPolicy() == Qt::NoFocus) continue;
        if (last) QWidget::setTabOrder(last, widget);
        last = widget;
    }
}

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

std::string ViewNode::accessibleText() const {
    std::string all;
    for (const View& child : m_children) {
        const std::string text = child.node().accessibleText();
        if (!all.empty() && !text.empty()) all += ", ";
        all += text;
    }
    return all;
}

void ViewNode::realise(Element& element, const Surroundings& surroundings) const {
    for (const View& child : m_children)
        element.add(child, surroundings);
}

QSizeF ViewNode::measure(const Element& element, const Proposal& proposal) const {
    return element.parts().back().sizeThatFits(proposal);
}

void ViewNode::place(const Element& element, const QRectF& rect) const {
    if (element.hasWidget()) element.widget().setGeometry(wholePoints(rect));
    for (const Element& part : element.parts())
        part.place(element.hasWidget() ? QRectF({}, rect.size()) : rect);
}
