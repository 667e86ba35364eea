#include "SwiftUI/Qt/ButtonWidget.h"

#include "AppKit/Qt/Appearance/ControlDrawing.h"

ButtonWidget::ButtonWidget(QWidget* parent) : QAbstractButton(parent), m_shortcut(this) {
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    const auto act = [this] {
        // What the action leads to may draw this button anew, with another action.
        const auto action = m_action;
        if (action) action();
    };
    connect(this, &QAbstractButton::clicked, this, act);
    connect(&m_shortcut, &QShortcut::activated, this, act);
}

void ButtonWidget::setButton(std::function<void()> action, const Environment& environment) {
    m_action = std::move(action);
    m_environment = environment;
    m_hasContentShape = false;
    QList<QKeySequence> keys;
    const auto& shortcut = environment.keyboardShortcut;
    if (shortcut == KeyboardShortcut::defaultAction) keys = {Qt::Key_Return, Qt::Key_Enter};
    if (shortcut == KeyboardShortcut::cancelAction) keys = {Qt::Key_Escape};
    m_shortcut.setKeys(keys);
    update();
}

Environment ButtonWidget::labelEnvironment() const {
    Environment label = m_environment;
    label.buttonStyle = ButtonStyle::automatic;
    label.keyboardShortcut.reset();
    label.accessibilityLabel.clear();
    label.accessibilityHint.clear();
    if (isProminent()) {
        label.primary = Qt::white;
        label.foregroundStyle.reset();
    }
    return label;
}

ButtonWidget::Chrome ButtonWidget::chrome() const {
    if (isPlain()) return {.height = 0, .sides = 0, .radius = 6};
    if (m_environment.controlSize == ControlSize::large)
        return {.height = 32, .sides = 16, .radius = 8};
    return {.height = 26, .sides = 12, .radius = 6};
}

int ButtonWidget::margin() const { return isPlain() ? 4 + focusRingMargin : focusRingMargin; }

bool ButtonWidget::hitButton(const QPoint& position) const {
    return area().contains(position) && (!isPlain() || m_hasContentShape || childAt(position));
}

void ButtonWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const double radius = chrome().radius;
    const QColor tint = tintOf(m_environment);
    if (!isPlain())
        return drawPushButton(painter, area(), palette(),
                              {radius, isProminent(), tint, isDown(), underMouse(), hasFocus()});
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(faintText(palette(), isDown() ? 0.1 : underMouse() ? 0.045 : 0));
    painter.drawRoundedRect(area(), radius, radius);
    if (hasFocus()) drawFocusRing(painter, area(), radius, tint);
}

bool ButtonWidget::isProminent() const {
    return !isPlain() && (m_environment.buttonStyle == ButtonStyle::borderedProminent ||
                          m_environment.keyboardShortcut == KeyboardShortcut::defaultAction);
}

QRectF ButtonWidget::area() const {
    constexpr int ring = focusRingMargin;
    return QRectF(rect()).adjusted(ring, ring, -ring, -ring);
}
