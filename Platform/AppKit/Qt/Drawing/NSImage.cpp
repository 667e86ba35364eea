#include "AppKit/Qt/Drawing/Pictures.h"

#include "AppKit/Qt/Drawing/NSGraphicsContext.h"
#include "AppKit/Qt/Drawing/Symbol.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QStandardPaths>
#include <QSvgRenderer>

namespace {

class InkEngine : public QIconEngine {
public:
    explicit InkEngine(std::string name) : m_name(std::move(name)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        drawTintedSymbol(*painter, m_name, rect, painter->pen().color());
    }

    QIconEngine* clone() const override { return new InkEngine(*this); }

private:
    const std::string m_name;
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

QImage pictureOf(const NSImage& image, int side, const QColor& ink) {
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QSvgRenderer(traySymbolFile(image.name(), side)).render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), image.isTemplate() ? ink : Qt::black);
    return picture;
}

QString themeNameOf(const NSImage& image) {
    const QString name = traySymbolName(image.name());
    const auto file = QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                             "icons/hicolor/16x16/status/" + name + ".svg");
    return file.isEmpty() ? QString() : name;
}

QIcon inkIconFrom(const NSImage& image) { return QIcon(new InkEngine(image.name())); }
