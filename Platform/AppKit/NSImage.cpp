#include "AppKit/NSImage+Private.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace {

bool isTextLight() {
    return QGuiApplication::palette().color(QPalette::WindowText).lightness() > 127;
}

QString symbolFile(const std::string& name) {
    return ":/Symbols/" + QString::fromStdString(name) + ".svg";
}

/// The symbol as it is drawn, black on a white ground; as a template, the other way round where the
/// text is light. What the tray is painted with is not known: the ground keeps it legible on all.
QPixmap draw(const std::string& name, bool isTemplate, const QSize& size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(symbolFile(name)).render(&painter);
    painter.end();
    if (isTemplate && isTextLight()) image.invertPixels();
    return QPixmap::fromImage(image);
}

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
        painter->drawPixmap(rect, pixmap(rect.size(), mode, state));
    }

    /// For trays that are sent pictures and ask for no size.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        return {{16, 16}, {22, 22}, {24, 24}, {32, 32}, {48, 48}};
    }

    QIconEngine* clone() const override { return new SymbolEngine(*this); }

private:
    const std::string m_name;
    const bool m_template;
};

} // namespace

std::shared_ptr<NSImage>
NSImage::imageWithSystemSymbolName(const std::string& name,
                                   const std::optional<std::string>& accessibilityDescription) {
    if (!QFile::exists(symbolFile(name))) return nullptr;
    return std::shared_ptr<NSImage>(new NSImage(name, accessibilityDescription));
}

QIcon iconFrom(const NSImage& image) {
    return QIcon(new SymbolEngine(image.name(), image.isTemplate()));
}
