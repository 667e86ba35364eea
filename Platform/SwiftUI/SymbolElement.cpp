#include "AppKit/Symbol+Private.h"
#include "SwiftUI/WidgetElement+Private.h"
#include "SwiftUI/WidgetElements+Private.h"

#include <QFile>
#include <QImage>

#include <cmath>

namespace {

/// A symbol is a little larger than the letters beside it.
constexpr double sidePerPoint = 1.3;

/// Draws the symbol in one colour on the device's own pixels, whatever its scale.
void drawTinted(QPainter& painter, const std::string& name, const QRectF& rect,
                const QColor& color) {
    const QTransform toDevice = painter.deviceTransform();
    const QRect area = toDevice.mapRect(rect).toAlignedRect();
    QImage layer(area.size(), QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);
    QPainter ink(&layer);
    ink.setRenderHint(QPainter::Antialiasing);
    QTransform upright = QTransform::fromTranslate(0, 2 * rect.center().y()).scale(1, -1);
    ink.setTransform(upright * toDevice * QTransform::fromTranslate(-area.x(), -area.y()));
    drawSymbolInk(ink, name, rect);
    ink.resetTransform();
    ink.setCompositionMode(QPainter::CompositionMode_SourceIn);
    ink.fillRect(layer.rect(), color);
    ink.end();
    painter.setTransform(toDevice.inverted());
    painter.drawImage(area.topLeft(), layer);
}

class SymbolWidget : public QWidget {
public:
    using QWidget::QWidget;

    void setSymbol(const std::string& name, const QColor& color) {
        m_name = name;
        m_color = color;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        if (!QFile::exists(symbolFile(m_name))) return;
        QPainter painter(this);
        drawTinted(painter, m_name, rect(), m_color);
    }

private:
    std::string m_name;
    QColor m_color;
};

} // namespace

ElementPointer makeSymbol(const std::string& name, const Environment& environment,
                          const WidgetPlace& place) {
    auto& widget = place.take<SymbolWidget>();
    widget.setSymbol(name, foregroundOf(environment));
    widget.setAccessibleName(QString::fromStdString(environment.accessibilityLabel));
    const double side = std::round(environment.font.size() * sidePerPoint);
    const auto measure = [side](const Proposal&) { return QSizeF(side, side); };
    return std::make_unique<WidgetElement<decltype(measure)>>(widget, measure);
}
