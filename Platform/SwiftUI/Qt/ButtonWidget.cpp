#include "SwiftUI/Qt/ButtonWidget.h"

#include "AppKit/FocusRing+Private.h"

namespace {

void paintFilled(QPainter& painter, const QRectF& rect, double radius, const QColor& fill) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(rect, radius, radius);
}

void paintBordered(QPainter& painter, const QRectF& rect, double radius, const QPalette& palette,
                   bool down, bool hovered) {
    const bool dark = isDark(palette);
    const QRectF outline = rect.adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(faintText(palette, dark ? 0.16 : 0.2));
    const int light = dark ? (down ? 60 : hovered ? 45 : 34) : 255;
    painter.setBrush(QColor(255, 255, 255, light));
    painter.drawRoundedRect(outline, radius - 0.5, radius - 0.5);
    if (dark || !(down || hovered)) return;
    painter.setBrush(QColor(0, 0, 0, down ? 30 : 10));
    painter.drawRoundedRect(outline, radius - 0.5, radius - 0.5);
}

} // namespace

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
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = chrome().radius;
    const QColor tint = tintOf(m_environment);
    if (isPlain()) {
        if (isDown() || underMouse())
            paintFilled(painter, area(), radius, faintText(palette(), isDown() ? 0.1 : 0.045));
    } else if (isProminent()) {
        const int darker = isDown() ? 118 : underMouse() ? 106 : 100;
        paintFilled(painter, area(), radius, tint.darker(darker));
    } else {
        paintBordered(painter, area(), radius, palette(), isDown(), underMouse());
    }
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
