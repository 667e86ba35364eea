#include "SwiftUI/Qt/ScrollIndicator.h"

#include "AppKit/Qt/Appearance/ControlDrawing.h"

#include <QMouseEvent>

#include <algorithm>

void ScrollIndicator::setTint(const QColor& tint) {
    m_tint = tint;
    update();
}

void ScrollIndicator::setMarked(bool marked) {
    m_marked = marked;
    update();
}

void ScrollIndicator::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const bool grasped = isSliderDown() || underMouse();
    painter.setBrush(m_marked ? m_tint : faintText(palette(), grasped ? 0.45 : 0.3));
    const QRectF bar = knob().adjusted(3, 2, -3, -2);
    painter.drawRoundedRect(bar, bar.width() / 2, bar.width() / 2);
}

// The desktop's style knows nothing of this knob, so the bar follows the pointer itself.
void ScrollIndicator::mousePressEvent(QMouseEvent* event) {
    const QRectF now = knob();
    const double y = event->position().y();
    if (y < now.top()) return triggerAction(SliderPageStepSub);
    if (y > now.bottom()) return triggerAction(SliderPageStepAdd);
    m_grabbedAt = y - now.top();
    setSliderDown(true);
}

void ScrollIndicator::mouseMoveEvent(QMouseEvent* event) {
    if (!isSliderDown()) return;
    const double way = height() - knob().height();
    if (way <= 0) return;
    const double share = (event->position().y() - m_grabbedAt) / way;
    setSliderPosition(minimum() + qRound(share * (maximum() - minimum())));
}

QRectF ScrollIndicator::knob() const {
    constexpr double shortest = 28;
    const double all = maximum() - minimum() + pageStep();
    const double length = std::max(shortest, height() * pageStep() / all);
    const double share =
        maximum() > minimum() ? double(sliderPosition() - minimum()) / (maximum() - minimum()) : 0;
    return {0, share * (height() - length), double(QWidget::width()), length};
}
