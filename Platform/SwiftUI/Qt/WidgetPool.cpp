#include "SwiftUI/Qt/WidgetPool.h"

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
