#include "AppKit/Qt/Panels/PanelPicture.h"

#include "AppKit/Qt/Drawing/NSGraphicsContext.h"

#include <QPainter>

#include <cmath>

using WindowServer::PixelRect;

QImage pictureOf(NSView& view, const NSSize& size, double scale) {
    const auto pixels = [scale](double points) {
        return static_cast<int>(std::lround(points * scale));
    };
    QImage picture(pixels(size.width), pixels(size.height), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(picture.width() / size.width, picture.height() / size.height);
    if (!view.isFlipped()) {
        painter.translate(0, size.height);
        painter.scale(1, -1);
    }
    const NSGraphicsContext context(painter);
    view.drawRect(view.bounds());
    return picture;
}

std::vector<PixelRect> inkOf(const QImage& picture) {
    std::vector<PixelRect> ink;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            if (qAlpha(row[x]) == 0) continue;
            const int start = x;
            while (x < picture.width() && qAlpha(row[x]) != 0)
                ++x;
            ink.push_back({start, y, x - start, 1});
        }
    }
    return ink;
}
