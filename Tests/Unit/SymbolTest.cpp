#include "AppKit/Qt/Drawing/Symbol.h"
#include "AppKit/AppKit.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>

TEST(Symbol, FillsItsSquareAndStaysWithinIt) {
    constexpr int side = 48;
    constexpr int margin = 16;
    const QRect square(margin, margin, side, side);
    for (const QString& file : QDir(":/Symbols").entryList(QDir::Files)) {
        const std::string name = QFileInfo(file).completeBaseName().toStdString();
        SCOPED_TRACE(name);
        QImage image(side + 2 * margin, side + 2 * margin, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        drawSymbolInk(painter, name, square);
        painter.end();

        QRect bounds;
        double ink = 0; // In squares.
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const int alpha = qAlpha(image.pixel(x, y));
                if (alpha) bounds |= QRect(x, y, 1, 1);
                ink += alpha / 255.0 / (side * side);
            }
        EXPECT_TRUE(square.contains(bounds));
        EXPECT_GE(std::max(bounds.width(), bounds.height()), side * 3 / 4);
        // In the middle, or a row of symbols looks uneven.
        EXPECT_LE((bounds.center() - square.center()).manhattanLength(), side / 12);
        // A line drawing has less ink than a filled one, and each enough to be seen.
        EXPECT_GT(ink, 0.15);
        EXPECT_LT(ink, 0.55);
    }
}

TEST(NSImage, IsNullForAnUnknownSymbol) {
    EXPECT_EQ(NSImage::imageWithSystemSymbolName("no.such.symbol", std::nullopt), nullptr);
    EXPECT_EQ(NSImage::imageWithSystemSymbolName("", std::nullopt), nullptr);
}
