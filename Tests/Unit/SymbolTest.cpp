#include "AppKit/AppKit.h"
#include "AppKit/Symbol+Private.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>

namespace {

constexpr int side = 48;
constexpr int margin = 16;

/// How dark each pixel is with the symbol in a square that has a margin all around.
QImage inkOf(const std::string& name) {
    QImage image(side + 2 * margin, side + 2 * margin, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawSymbolInk(painter, name, {margin, margin, side, side});
    painter.end();
    return image.convertToFormat(QImage::Format_Alpha8);
}

struct Ink {
    QRect bounds;
    double share = 0; ///< of the square
};

Ink measure(const QImage& image) {
    Ink ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = image.constScanLine(y)[x];
            if (alpha) ink.bounds |= QRect(x, y, 1, 1);
            ink.share += alpha / 255.0 / (side * side);
        }
    return ink;
}

} // namespace

TEST(Symbol, FillsItsSquareAndStaysWithinIt) {
    for (const QString& file : QDir(":/Symbols").entryList(QDir::Files)) {
        const std::string name = QFileInfo(file).completeBaseName().toStdString();
        SCOPED_TRACE(name);
        const Ink ink = measure(inkOf(name));
        EXPECT_TRUE(QRect(margin, margin, side, side).contains(ink.bounds));
        EXPECT_GE(std::max(ink.bounds.width(), ink.bounds.height()), side * 3 / 4);
        // In the middle, or a row of symbols looks uneven.
        EXPECT_LE(std::abs(ink.bounds.center().x() - margin - side / 2), side / 24 + 1);
        EXPECT_LE(std::abs(ink.bounds.center().y() - margin - side / 2), side / 24 + 1);
        // A line drawing has less ink than a filled one, and each enough to be seen.
        EXPECT_GT(ink.share, 0.15);
        EXPECT_LT(ink.share, 0.55);
    }
}

TEST(NSImage, IsNullForAnUnknownSymbol) {
    EXPECT_EQ(NSImage::imageWithSystemSymbolName("no.such.symbol", std::nullopt), nullptr);
    EXPECT_EQ(NSImage::imageWithSystemSymbolName("", std::nullopt), nullptr);
}
