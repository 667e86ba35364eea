#include "AppKit/Qt/Appearance/ControlStyle.h"

#include "AppKit/Qt/Appearance/ControlDrawing.h"

#include <QStyleOptionButton>

namespace {

// In points.
constexpr int leastWidth = 84;
constexpr int height = 26;
constexpr int sidePadding = 14;

bool isDefault(const QStyleOptionButton& button) {
    return button.features & QStyleOptionButton::DefaultButton;
}

void drawBevel(QPainter& painter, const QStyleOptionButton& button) {
    constexpr int ring = focusRingMargin;
    painter.save();
    drawPushButton(painter, button.rect.adjusted(ring, ring, -ring, -ring), button.palette,
                   {.radius = 6,
                    .prominent = isDefault(button),
                    .tint = button.palette.color(QPalette::Highlight),
                    .down = bool(button.state & QStyle::State_Sunken),
                    .hovered = bool(button.state & QStyle::State_MouseOver),
                    .focused = bool(button.state & QStyle::State_HasFocus)});
    painter.restore();
}

} // namespace

ControlStyle::ControlStyle() : QProxyStyle("Fusion") {}

int ControlStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                              const QWidget* widget) const {
    switch (metric) {
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_ButtonDefaultIndicator:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QSize ControlStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                     const QSize& size, const QWidget* widget) const {
    if (type != CT_PushButton) return QProxyStyle::sizeFromContents(type, option, size, widget);
    constexpr int margins = 2 * focusRingMargin;
    return QSize(size.width() + 2 * sidePadding, height).expandedTo({leastWidth, size.height()}) +
           QSize(margins, margins);
}

void ControlStyle::drawControl(ControlElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (!button || (element != CE_PushButton && element != CE_PushButtonBevel))
        return QProxyStyle::drawControl(element, option, painter, widget);
    drawBevel(*painter, *button);
    if (element == CE_PushButtonBevel) return;
    QStyleOptionButton label = *button;
    if (isDefault(*button))
        label.palette.setColor(QPalette::ButtonText,
                               button->palette.color(QPalette::HighlightedText));
    QProxyStyle::drawControl(CE_PushButtonLabel, &label, painter, widget);
}
