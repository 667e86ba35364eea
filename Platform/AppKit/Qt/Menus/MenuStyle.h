#pragma once

#include <QProxyStyle>

/// How the program's menus look: rounded, with a hairline around them, the keys of an item at its
/// right and the images in a column of their own.
class MenuStyle : public QProxyStyle {
public:
    static constexpr int radius = 8; ///< Of the corners.

    /// The one style of all menus.
    static MenuStyle& shared();

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;

private:
    MenuStyle();
};
