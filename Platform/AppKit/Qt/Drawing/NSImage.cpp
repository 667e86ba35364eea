#include "AppKit/Qt/Drawing/Symbol.h"
#include "AppKit/Qt/Windows/Coordinates.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QScopedValueRollback>
#include <QStandardPaths>
#include <QSvgRenderer>

namespace {

class InkEngine : public QIconEngine {
public:
    explicit InkEngine(std::string name) : m_name(std::move(name)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        drawSymbol(*painter, m_name, rect, painter->pen().color());
    }

    QIconEngine* clone() const override { return new InkEngine(*this); }

private:
    const std::string m_name;
};

/// As the desktop's icons name it.
QString traySymbolName(const std::string& name) {
    const QString program = QGuiApplication::desktopFileName();
    return program + "." + QString::fromStdString(name) + "-symbolic";
}

/// Its drawing for a square of so many pixels each way: small ones are drawn for themselves.
QString traySymbolFile(const std::string& name, int side) {
    int drawn = 16;
    for (const int each : {22, 24, 32})
        if (each <= side) drawn = each;
    return QString(":/Icons/status/%1/%2.svg").arg(drawn).arg(traySymbolName(name));
}

/// Where the drawing of a symbol of that name would be.
QString symbolFile(const std::string& name) {
    return ":/Symbols/" + QString::fromStdString(name) + ".svg";
}

} // namespace

QIcon programIcon() { return QIcon(":/Icons/" + QGuiApplication::desktopFileName() + ".svg"); }

void drawSymbol(QPainter& painter, const std::string& name, const QRectF& rect, const QColor& color,
                SymbolWeight weight) {
    QFile file(symbolFile(name));
    if (!file.open(QFile::ReadOnly)) return;
    QByteArray drawing = file.readAll().replace("#000", color.name().toLatin1());
    // All symbols are drawn with strokes of the same width.
    if (weight == SymbolWeight::bold)
        drawing.replace(R"(stroke-width="2")", R"(stroke-width="2.8")");
    QSvgRenderer(drawing).render(&painter, rect);
}

std::shared_ptr<NSImage> NSImage::symbol(const std::string& name, double pointSize) {
    // A symbol is wider than the letters beside it, and stands in a square.
    constexpr double sidePerPoint = 1.6;
    const double side = pointSize * sidePerPoint;
    const auto image = imageWithSize({side, side}, true, [name](const NSRect& rect) {
        drawSymbol(*thePainter, name, rectFrom(rect), Qt::black);
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
    image->m_accessibilityDescription = accessibilityDescription.value_or("");
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

// On a layer that has the pixels of what lies below, whatever its scale: nothing is blurred.
void NSImage::drawInRect(const NSRect& rect) const {
    if (!thePainter || m_size.width <= 0 || m_size.height <= 0) return;
    QPainter& below = *thePainter;
    const QTransform toDevice = below.deviceTransform();
    const QRect area = toDevice.mapRect(rectFrom(rect)).toAlignedRect();
    QImage layer(area.size(), QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);
    QPainter painter(&layer);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(toDevice * QTransform::fromTranslate(-area.x(), -area.y()));
    painter.translate(rect.origin.x, rect.origin.y);
    painter.scale(rect.size.width / m_size.width, rect.size.height / m_size.height);
    if (m_flipped) {
        painter.translate(0, m_size.height);
        painter.scale(1, -1);
    }
    const QScopedValueRollback target(thePainter, &painter);
    if (!m_drawingHandler({{}, m_size})) return;
    painter.end();
    below.save();
    below.setTransform(toDevice.inverted(), true);
    below.drawImage(area.topLeft(), layer);
    below.restore();
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
