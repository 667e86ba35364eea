#include "SwiftUI/ButtonWidget+Private.h"

#include "AppKit/FocusRing+Private.h"

namespace {

constexpr double plainRadius = 6;

void paintPlain(QPainter& painter, const QRectF& rect, const QPalette& palette, bool down) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(faintText(palette, down ? 0.1 : 0.045));
    painter.drawRoundedRect(rect, plainRadius, plainRadius);
}

void paintProminent(QPainter& painter, const QRectF& rect, double radius, const QColor& tint) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(tint);
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

void ButtonWidget::setLook(const Look& look) {
    m_look = look;
    update();
}

void ButtonWidget::setKeyboardShortcut(const std::optional<KeyboardShortcut>& shortcut) {
    QList<QKeySequence> keys;
    if (shortcut == KeyboardShortcut::defaultAction) keys = {Qt::Key_Return, Qt::Key_Enter};
    if (shortcut == KeyboardShortcut::cancelAction) keys = {Qt::Key_Escape};
    m_shortcut.setKeys(keys);
}

int ButtonWidget::margin() const { return m_look.plain ? 4 + focusRingMargin : focusRingMargin; }

bool ButtonWidget::hitButton(const QPoint& position) const {
    if (!chrome().contains(position)) return false;
    return !m_look.plain || m_hasContentShape || childAt(position);
}

void ButtonWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = m_look.plain ? plainRadius : m_look.radius;
    if (m_look.plain) {
        if (isDown() || underMouse()) paintPlain(painter, chrome(), palette(), isDown());
    } else if (m_look.prominent) {
        const int darker = isDown() ? 118 : underMouse() ? 106 : 100;
        paintProminent(painter, chrome(), m_look.radius, m_look.tint.darker(darker));
    } else {
        paintBordered(painter, chrome(), m_look.radius, palette(), isDown(), underMouse());
    }
    if (hasFocus()) drawFocusRing(painter, chrome(), radius, m_look.tint);
}

QRectF ButtonWidget::chrome() const {
    constexpr int ring = focusRingMargin;
    return QRectF(rect()).adjusted(ring, ring, -ring, -ring);
}
