#include "SwiftUI/Qt/Element.h"

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

void Element::add(const View& view, const Environment& environment) {
    const auto element = view.realise(environment);
    if (element->isGroup())
        m_parts.insert(m_parts.end(), element->m_parts.begin(), element->m_parts.end());
    else
        m_parts.push_back(element);
}

QSizeF Element::sizeThatFits(const Proposal& proposal) const {
    const auto known = std::find_if(m_measured.begin(), m_measured.end(),
                                    [&](const auto& each) { return each.first == proposal; });
    if (known != m_measured.end()) return known->second;
    const QSizeF size = measure(proposal);
    m_measured.emplace_back(proposal, size);
    return size;
}

QSizeF Element::measure(const Proposal& proposal) const {
    return m_parts.back()->sizeThatFits(proposal);
}

void Element::place(const QRectF& rect) const {
    if (m_widget) m_widget->setGeometry(wholePoints(rect));
    for (const auto& part : m_parts)
        part->place(m_widget ? QRectF({}, rect.size()) : rect);
}

std::string Element::accessibleText() const {
    if (m_text) return *m_text;
    std::string all;
    for (const auto& part : m_parts) {
        const std::string text = part->accessibleText();
        if (!all.empty() && !text.empty()) all += ", ";
        all += text;
    }
    return all;
}

QRect wholePoints(const QRectF& rect) {
    // A QRect counts the last pixel within.
    return {rect.topLeft().toPoint(), rect.bottomRight().toPoint() - QPoint(1, 1)};
}
