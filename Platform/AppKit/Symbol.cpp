#include "AppKit/Symbol+Private.h"

#include <QSvgRenderer>

namespace {

/// The place in `rect` of one part of the drawing.
QRectF placeOf(const QRectF& part, const QRectF& drawing, const QRectF& rect) {
    const double scale = rect.width() / drawing.width();
    return {rect.x() + (part.x() - drawing.x()) * scale,
            rect.y() + (part.y() - drawing.y()) * scale, part.width() * scale,
            part.height() * scale};
}

} // namespace

QString symbolFile(const std::string& name) {
    return ":/Symbols/" + QString::fromStdString(name) + ".svg";
}

void drawSymbolInk(QPainter& painter, const std::string& name, const QRectF& rect) {
    QSvgRenderer renderer(symbolFile(name));
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
