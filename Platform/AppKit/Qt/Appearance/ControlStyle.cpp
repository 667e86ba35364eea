#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "AppKit/Qt/Menus/MenuDrawing.h"

#include <QProxyStyle>
#include <QStyleOptionButton>

namespace {

// In points.
constexpr int leastWidth = 84;
constexpr int height = 26;
constexpr int sidePadding = 14;

bool isDefault(const QStyleOptionButton& button) {
    return button.features & QStyleOptionButton::DefaultButton;
}

void drawButton(const QStyleOptionButton& button, QPainter& painter) {
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

QSize buttonSize(const QSize& content) {
    constexpr int margins = 2 * focusRingMargin;
    return QSize(content.width() + 2 * sidePadding, height)
               .expandedTo({leastWidth, content.height()}) +
           QSize(margins, margins);
}

/// How the toolkit draws what it draws of the program's windows: push buttons, flat and rounded,
/// the default one in the accent colour and the one with the keyboard in a ring; and menus.
class ControlStyle : public QProxyStyle {
public:
    ControlStyle() : QProxyStyle("Fusion") {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override {
        switch (metric) {
        case PM_MenuHMargin:
        case PM_MenuVMargin:
            return menuRim;
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
        case PM_ButtonDefaultIndicator:
        case PM_MenuPanelWidth:
        case PM_SubMenuOverlap:
            return 0;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
        }
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override {
        if (type == CT_PushButton) return buttonSize(size);
        const auto* const row = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (type == CT_MenuItem && row) return menuRowSize(*row);
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element == PE_FrameMenu) return; // The panel has drawn it.
        if (element != PE_PanelMenu)
            return QProxyStyle::drawPrimitive(element, option, painter, widget);
        drawMenuPanel(*option, *painter,
                      widget && widget->testAttribute(Qt::WA_TranslucentBackground));
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        if (element == CE_MenuEmptyArea) return; // The panel has filled it.
        const auto* const row = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
        if (element == CE_MenuItem && row) return drawMenuRow(*row, *painter);
        if (!button || (element != CE_PushButton && element != CE_PushButtonBevel))
            return QProxyStyle::drawControl(element, option, painter, widget);
        drawButton(*button, *painter);
        if (element == CE_PushButtonBevel) return;
        QStyleOptionButton label = *button;
        if (isDefault(*button))
            label.palette.setColor(QPalette::ButtonText,
                                   button->palette.color(QPalette::HighlightedText));
        QProxyStyle::drawControl(CE_PushButtonLabel, &label, painter, widget);
    }
};

} // namespace

QStyle* makeControlStyle() { return new ControlStyle; }
