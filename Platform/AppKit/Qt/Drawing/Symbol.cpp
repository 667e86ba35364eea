#include "AppKit/Qt/Drawing/Symbol.h"

#include <QFile>
#include <QImage>
#include <QSvgRenderer>

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

void drawSymbolInk(QPainter& painter, const std::string& name, const QRectF& rect,
                   SymbolWeight weight) {
    QSvgRenderer renderer(drawingOf(name, weight));
    painter.save();
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

void drawOnOwnPixels(QPainter& target, const QRectF& rect,
                     const std::function<bool(QPainter&)>& draw) {
    const QTransform toDevice = target.deviceTransform();
    const QRect area = toDevice.mapRect(rect).toAlignedRect();
    QImage layer(area.size(), QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);
    QPainter painter(&layer);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(toDevice * QTransform::fromTranslate(-area.x(), -area.y()));
    const bool drawn = draw(painter);
    painter.end();
    if (!drawn) return;
    target.save();
    target.setTransform(toDevice.inverted(), true);
    target.drawImage(area.topLeft(), layer);
    target.restore();
}

void drawTintedSymbol(QPainter& painter, const std::string& name, const QRectF& rect,
                      const QColor& color, SymbolWeight weight) {
    drawOnOwnPixels(painter, rect, [&](QPainter& layer) {
        drawSymbolInk(layer, name, rect, weight);
        layer.setCompositionMode(QPainter::CompositionMode_SourceIn);
        layer.resetTransform();
        layer.fillRect(layer.window(), color);
        return true;
    });
}
