#include "AppKit/Qt/Drawing/Symbol.h"

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QSvgRenderer>

#include <algorithm>
#include <iterator>

namespace {

/// The place in `rect` of one part of the drawing.
QRectF placeOf(const QRectF& part, const QRectF& drawing, const QRectF& rect) {
    const double scale = rect.width() / drawing.width();
    return {rect.x() + (part.x() - drawing.x()) * scale,
            rect.y() + (part.y() - drawing.y()) * scale, part.width() * scale,
            part.height() * scale};
}

/// All symbols are drawn with strokes of the same width.
QByteArray drawingOf(const std::string& name, SymbolWeight weight) {
    QFile file(symbolFile(name));
    if (!file.open(QFile::ReadOnly)) return {};
    QByteArray drawing = file.readAll();
    if (weight == SymbolWeight::bold)
        drawing.replace(R"(stroke-width="2")", R"(stroke-width="2.8")");
    return drawing;
}

} // namespace

QString symbolFile(const std::string& name) {
    return ":/Symbols/" + QString::fromStdString(name) + ".svg";
}

QString traySymbolName(const std::string& name) {
    const QString program = QGuiApplication::desktopFileName();
    return program + "." + QString::fromStdString(name) + "-symbolic";
}

QString traySymbolFile(const std::string& name, int side) {
    constexpr int sides[] = {32, 24, 22, 16};
    const auto* const fits = std::ranges::find_if(sides, [side](int each) { return each <= side; });
    const int drawn = fits == std::end(sides) ? 16 : *fits;
    return QString(":/Icons/status/%1/%2.svg").arg(drawn).arg(traySymbolName(name));
}

void drawSymbolInk(QPainter& painter, const std::string& name, const QRectF& rect,
                   SymbolWeight weight) {
    QSvgRenderer renderer(drawingOf(name, weight));
    painter.save();
    painter.translate(0, 2 * rect.center().y());
    painter.scale(1, -1);
    for (const char* part : {"ink", "gap", "slash"}) {
        if (!renderer.elementExists(part)) continue;
        painter.setCompositionMode(QLatin1String(part) == QLatin1String("gap")
                                       ? QPainter::CompositionMode_DestinationOut
                                       : QPainter::CompositionMode_SourceOver);
        renderer.render(&painter, part,
                        placeOf(renderer.boundsOnElement(part), renderer.viewBoxF(), rect));
    }
    painter.restore();
}

void drawTintedSymbol(QPainter& painter, const std::string& name, const QRectF& rect,
                      const QColor& color, SymbolWeight weight) {
    const QTransform toDevice = painter.deviceTransform();
    const QRect area = toDevice.mapRect(rect).toAlignedRect();
    QImage layer(area.size(), QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);
    QPainter ink(&layer);
    ink.setRenderHint(QPainter::Antialiasing);
    const QTransform upright = QTransform::fromTranslate(0, 2 * rect.center().y()).scale(1, -1);
    ink.setTransform(upright * toDevice * QTransform::fromTranslate(-area.x(), -area.y()));
    drawSymbolInk(ink, name, rect, weight);
    ink.resetTransform();
    ink.setCompositionMode(QPainter::CompositionMode_SourceIn);
    ink.fillRect(layer.rect(), color);
    ink.end();
    painter.save();
    painter.setTransform(toDevice.inverted(), true);
    painter.drawImage(area.topLeft(), layer);
    painter.restore();
}
