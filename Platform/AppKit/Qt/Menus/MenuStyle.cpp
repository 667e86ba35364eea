#include "AppKit/Qt/Appearance/ControlDrawing.h"
#include "AppKit/Qt/Menus/MenuPopup.h"

#include <QProxyStyle>
#include <QStyleOptionMenuItem>

namespace {

// In points.
constexpr int rim = 5; ///< Between the menu's edge and its rows.
constexpr int rowPadding = 10;
constexpr int rowSpace = 10; ///< In the height of a row, besides its text.
constexpr int separatorHeight = 11;
constexpr int imageSide = 16;
constexpr int imageGap = 8;
constexpr int keysGap = 36;
constexpr int chevronWidth = 5;
constexpr double rowRadius = 5;

struct Row {
    explicit Row(const QStyleOptionMenuItem& option)
        : title(option.text.section('\t', 0, 0)), keys(option.text.section('\t', 1)),
          isSubmenu(option.menuItemType == QStyleOptionMenuItem::SubMenu),
          imageColumn(option.maxIconWidth > 0 ? imageSide + imageGap : 0) {}

    QString title;
    QString keys;
    bool isSubmenu;
    int imageColumn; ///< Its width; titles stand in a line whether or not a row has an image.
};

void drawSeparator(const QStyleOptionMenuItem& option, QPainter& painter) {
    const QRect line(option.rect.x() + rowPadding, option.rect.center().y(),
                     option.rect.width() - 2 * rowPadding, 1);
    painter.fillRect(line, faintText(option.palette, 0.14));
}

void drawChevron(const QRect& content, QPainter& painter, const QColor& colour) {
    const QPointF tip(content.x() + content.width(), content.y() + content.height() / 2.0);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({tip - QPointF(chevronWidth - 1, 4), tip - QPointF(1, 0),
                                    tip - QPointF(chevronWidth - 1, -4)}));
}

void drawItem(const QStyleOptionMenuItem& option, QPainter& painter) {
    const Row row(option);
    const bool isEnabled = option.state & QStyle::State_Enabled;
    const bool isSelected = isEnabled && (option.state & QStyle::State_Selected);
    const auto group = isEnabled ? QPalette::Active : QPalette::Disabled;
    const auto colour = [&](QPalette::ColorRole role) {
        return option.palette.color(group, isSelected ? QPalette::HighlightedText : role);
    };
    if (isSelected) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(option.palette.brush(QPalette::Active, QPalette::Highlight));
        painter.drawRoundedRect(option.rect, rowRadius, rowRadius);
    }
    const QRect content = option.rect.adjusted(rowPadding, 0, -rowPadding, 0);
    painter.setFont(option.font);
    painter.setPen(colour(QPalette::WindowText));
    if (!option.icon.isNull())
        option.icon.paint(&painter, QRect(content.x(), content.center().y() - imageSide / 2 + 1,
                                          imageSide, imageSide));
    constexpr int text = Qt::TextSingleLine | Qt::AlignVCenter;
    painter.drawText(content.adjusted(row.imageColumn, 0, 0, 0),
                     text | Qt::AlignLeft | Qt::TextHideMnemonic, row.title);
    painter.setPen(colour(QPalette::PlaceholderText));
    painter.drawText(content, text | Qt::AlignRight, row.keys);
    if (row.isSubmenu) drawChevron(content, painter, colour(QPalette::PlaceholderText));
}

QSize sizeOf(const QStyleOptionMenuItem& option) {
    if (option.menuItemType == QStyleOptionMenuItem::Separator) return {1, separatorHeight};
    const Row row(option);
    const int title =
        option.fontMetrics.size(Qt::TextSingleLine | Qt::TextShowMnemonic, row.title).width();
    int width = 2 * rowPadding + row.imageColumn + title;
    if (!row.keys.isEmpty()) width += keysGap + option.fontMetrics.horizontalAdvance(row.keys);
    if (row.isSubmenu) width += keysGap + chevronWidth;
    return {width, option.fontMetrics.height() + rowSpace};
}

/// Without translucency the corners are cut elsewhere.
void drawPanel(const QStyleOption& option, QPainter& painter, bool translucent) {
    const QRectF outline = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    const QColor edge = mixed(option.palette.color(QPalette::WindowText),
                              option.palette.color(QPalette::Window), 0.2);
    // Corners that are cut along the pixels end in the edge's colour.
    if (!translucent) painter.fillRect(option.rect, edge);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(edge, 1));
    painter.setBrush(option.palette.window());
    painter.drawRoundedRect(outline, menuRadius - 0.5, menuRadius - 0.5);
}

class MenuStyle : public QProxyStyle {
public:
    MenuStyle() : QProxyStyle("Fusion") {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override {
        if (metric == PM_MenuHMargin || metric == PM_MenuVMargin) return rim;
        if (metric == PM_MenuPanelWidth || metric == PM_SubMenuOverlap) return 0;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override {
        const auto* const row = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        return row ? sizeOf(*row) : QProxyStyle::sizeFromContents(type, option, size, widget);
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element == PE_FrameMenu) return; // The panel has drawn it.
        if (element != PE_PanelMenu)
            return QProxyStyle::drawPrimitive(element, option, painter, widget);
        painter->save();
        drawPanel(*option, *painter, widget && widget->testAttribute(Qt::WA_TranslucentBackground));
        painter->restore();
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        if (element == CE_MenuEmptyArea) return; // The panel has filled it.
        const auto* const row = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (!row) return QProxyStyle::drawControl(element, option, painter, widget);
        painter->save();
        if (row->menuItemType == QStyleOptionMenuItem::Separator)
            drawSeparator(*row, *painter);
        else
            drawItem(*row, *painter);
        painter->restore();
    }
};

} // namespace

QStyle* makeMenuStyle() { return new MenuStyle; }
