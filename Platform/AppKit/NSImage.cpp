#include "AppKit/NSImage+Private.h"

#include "AppKit/NSGraphicsContext+Private.h"
#include "AppKit/Symbol+Private.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <algorithm>

namespace {

bool isTextLight() {
    return QGuiApplication::palette().color(QPalette::WindowText).lightness() > 127;
}

/// The symbol as it is drawn, black on a white ground; as a template, the other way round where the
/// text is light. What the tray is painted with is not known: the ground keeps it legible on all.
QPixmap draw(const std::string& name, bool isTemplate, const QSize& size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const double side = std::min(size.width(), size.height()); // Trays' places are of any shape.
    QSvgRenderer(symbolFile(name))
        .render(&painter,
                QRectF((size.width() - side) / 2, (size.height() - side) / 2, side, side));
    painter.end();
    if (isTemplate && isTextLight()) image.invertPixels();
    return QPixmap::fromImage(image);
}

class InkEngine : public QIconEngine {
public:
    explicit InkEngine(std::string name) : m_name(std::move(name)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        drawTintedSymbol(*painter, m_name, rect, painter->pen().color());
    }

    /// For menus that others draw.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setPen(QGuiApplication::palette().color(QPalette::WindowText));
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new InkEngine(*this); }

private:
    const std::string m_name;
};

class SymbolEngine : public QIconEngine {
public:
    SymbolEngine(std::string name, bool isTemplate)
        : m_name(std::move(name)), m_template(isTemplate) {}

    QPixmap pixmap(const QSize& size, QIcon::Mode, QIcon::State) override {
        const QString key = QString("symbol %1 %2x%3 %4%5")
                                .arg(QString::fromStdString(m_name))
                                .arg(size.width())
                                .arg(size.height())
                                .arg(m_template)
                                .arg(isTextLight());
        QPixmap pixmap;
        if (QPixmapCache::find(key, &pixmap)) return pixmap;
        pixmap = draw(m_name, m_template, size);
        QPixmapCache::insert(key, pixmap);
        return pixmap;
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
               QIcon::State state) override {
        const double scale = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * scale).toSize(), mode, state));
    }

    /// For trays that are sent pictures and ask for no size: the usual ones, and twice those.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        return {{16, 16}, {22, 22}, {24, 24}, {32, 32}, {44, 44}, {48, 48}, {64, 64}};
    }

    QIconEngine* clone() const override { return new SymbolEngine(*this); }

private:
    const std::string m_name;
    const bool m_template;
};

} // namespace

std::shared_ptr<NSImage> NSImage::symbol(const std::string& name, double pointSize) {
    // A symbol is wider than the letters beside it, and stands in a square.
    constexpr double sidePerPoint = 1.6;
    const double side = pointSize * sidePerPoint;
    const auto image = imageWithSize({side, side}, false, [name](const NSRect& rect) {
        drawSymbolInk(NSGraphicsContext::currentContext()->painter(), name, rectFrom(rect));
        return true;
    });
    image->m_name = name;
    return image;
}

std::shared_ptr<NSImage>
NSImage::imageWithSystemSymbolName(const std::string& name,
                                   const std::optional<std::string>& accessibilityDescription) {
    if (!QFile::exists(symbolFile(name))) return nullptr;
    constexpr double systemFontSize = 13;
    const auto image = symbol(name, systemFontSize);
    image->m_accessibilityDescription = accessibilityDescription;
    return image;
}

std::shared_ptr<NSImage>
NSImage::imageWithSymbolConfiguration(const NSImageSymbolConfiguration& configuration) const {
    if (m_name.empty()) return nullptr;
    const auto image = symbol(m_name, configuration.pointSize());
    image->m_accessibilityDescription = m_accessibilityDescription;
    image->m_template = m_template;
    return image;
}

std::shared_ptr<NSImage> NSImage::imageWithSize(const NSSize& size, bool flipped,
                                                DrawingHandler drawingHandler) {
    return std::shared_ptr<NSImage>(new NSImage(size, flipped, std::move(drawingHandler)));
}

// The handler draws on a layer of its own, with the pixels of what lies below, so that nothing is
// drawn at a scale it was not meant for.
void NSImage::drawInRect(const NSRect& rect) const {
    auto* const context = NSGraphicsContext::currentContext();
    if (!context || m_size.width <= 0 || m_size.height <= 0) return;
    QPainter& target = context->painter();
    const QTransform toDevice = target.transform();
    const QRect area = toDevice.mapRect(rectFrom(rect)).toAlignedRect();
    QImage layer(area.size(), QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);

    QTransform toTarget =
        QTransform::fromTranslate(rect.origin.x, rect.origin.y)
            .scale(rect.size.width / m_size.width, rect.size.height / m_size.height);
    if (m_flipped) toTarget.translate(0, m_size.height).scale(1, -1);
    QPainter painter(&layer);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(toTarget * toDevice * QTransform::fromTranslate(-area.x(), -area.y()));
    bool drawn = false;
    {
        const NSGraphicsContext inner(painter);
        drawn = m_drawingHandler({{}, m_size});
    }
    painter.end();
    if (!drawn) return;
    target.save();
    target.resetTransform();
    target.drawImage(area.topLeft(), layer);
    target.restore();
}

QIcon iconFrom(const NSImage& image) {
    return QIcon(new SymbolEngine(image.name(), image.isTemplate()));
}

QIcon inkIconFrom(const NSImage& image) { return QIcon(new InkEngine(image.name())); }
