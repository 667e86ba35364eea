// How the parts of windows are drawn that more than one kind of window has.
#pragma once

#include <QPainter>
#include <QPalette>

bool isDark(const QPalette& palette);
/// With its opacity multiplied.
QColor thinned(QColor color, double opacity);
/// So large a share of the one, and the rest of the other.
QColor mixed(const QColor& one, const QColor& other, double share);
/// The text's colour, thinned.
QColor faintText(const QPalette& palette, double opacity);

struct PushButton {
    double radius;
    bool prominent; ///< Filled with the tint.
    QColor tint;
    bool down;
    bool hovered;
    bool focused;
};
void drawPushButton(QPainter& painter, const QRectF& body, const QPalette& palette,
                    const PushButton& button);

/// How far a control's widget reaches beyond the control, so that the ring finds room around it.
inline constexpr QMargins focusRingMargins(3, 3, 3, 3);

/// Around a control with such corners, a point away from it.
void drawFocusRing(QPainter& painter, const QRectF& control, double radius, const QColor& color);
