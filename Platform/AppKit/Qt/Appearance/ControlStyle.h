#pragma once

#include <QProxyStyle>

/// How the toolkit draws what it draws of the program's windows: push buttons, flat and rounded,
/// the default one in the accent colour and the one with the keyboard in a ring; and menus.
class ControlStyle : public QProxyStyle {
public:
    ControlStyle() : QProxyStyle("Fusion") {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};
