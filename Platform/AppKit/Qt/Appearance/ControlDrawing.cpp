#include "AppKit/Qt/Appearance/ControlDrawing.h"

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

QColor thinned(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(color.alphaF() * opacity));
    return color;
}

QColor mixed(const QColor& one, const QColor& other, double share) {
    const auto mix = [share](float a, float b) { return static_cast<float>(b + (a - b) * share); };
    return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                            mix(one.blueF(), other.blueF()));
}

QColor faintText(const QPalette& palette, double opacity) {
    return thinned(palette.color(QPalette::WindowText), opacity);
}

void drawPushButton(QPainter& painter, const QRectF& body, const QPalette& palette,
                    const PushButton& button) {
    const auto choose = [&](int atRest, int hovered, int down) {
        return button.down ? down : button.hovered ? hovered : atRest;
    };
    painter.setRenderHint(QPainter::Antialiasing);
    if (button.prominent) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(button.tint.darker(choose(100, 106, 118)));
        painter.drawRoundedRect(body, button.radius, button.radius);
    } else {
        const bool dark = isDark(palette);
        painter.setPen(faintText(palette, dark ? 0.16 : 0.2));
        painter.setBrush(dark ? QColor(255, 255, 255, choose(34, 45, 60))
                              : QColor::fromHsl(0, 0, choose(255, 245, 225)));
        painter.drawRoundedRect(body.adjusted(0.5, 0.5, -0.5, -0.5), button.radius - 0.5,
                                button.radius - 0.5);
    }
    if (button.focused) drawFocusRing(painter, body, button.radius, button.tint);
}

void drawFocusRing(QPainter& painter, const QRectF& control, double radius, const QColor& color) {
    constexpr double width = 2;
    constexpr double distance = 1 + width / 2;
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(control.adjusted(-distance, -distance, distance, distance),
                            radius + distance, radius + distance);
}
