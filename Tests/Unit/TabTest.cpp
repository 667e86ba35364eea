#include "AppKit/AppKit.h"
#include "AppKit/Qt/Contents/TabButton.h"
#include "AppKit/Qt/Contents/TabContent.h"
#include "SwiftUI/SwiftUI.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include <cmath>

namespace {

double luminance(QRgb colour) {
    const auto linear = [](int part) { return std::pow((part / 255.0 + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) +
           0.0722 * linear(qBlue(colour));
}

double contrast(QRgb a, QRgb b) {
    const double light = std::max(luminance(a), luminance(b));
    return (light + 0.05) / (std::min(luminance(a), luminance(b)) + 0.05);
}

} // namespace

TEST(Tabs, AreEnteredByTheKeyboardAtTheChosenOne) {
    NSTabViewController controller;
    for (const char* name : {"One", "Two", "Three"}) {
        const auto item = NSTabViewItem::tabViewItemWithViewController(
            std::make_shared<NSHostingController>(Button("Inside", [] {})));
        item->setLabel(name);
        controller.addTabViewItem(item);
    }
    TabContent content(controller);
    content.show();
    content.activateWindow();
    QApplication::setActiveWindow(&content);
    const auto tabs = content.findChildren<TabButton*>();
    for (const int chosen : {1, 2, 0}) {
        QTest::mouseClick(tabs[chosen], Qt::LeftButton);
        content.setFocus();
        QTest::keyClick(&content, Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), tabs[chosen]);
    }
}

TEST(Tabs, TheChosenOneIsLegible) {
    for (const auto& [window, text] :
         {std::pair{0xfff5f5f7, 0xff1d1d1f}, {0xff29292b, 0xfff2f2f4}}) {
        TabButton tab("MMMM", {});
        QPalette palette = QApplication::palette();
        palette.setColor(QPalette::Window, QColor::fromRgb(window));
        palette.setColor(QPalette::WindowText, QColor::fromRgb(text));
        tab.setPalette(palette);
        tab.setChecked(true);
        tab.resize(tab.sizeHint());
        const QImage image = tab.grab().toImage();
        const QRgb ground = image.pixel(image.width() / 2, 6);
        double best = 1;
        for (int y = image.height() / 2; y < image.height() - 5; ++y)
            for (int x = 5; x < image.width() - 5; ++x)
                best = std::max(best, contrast(image.pixel(x, y), ground));
        EXPECT_GE(best, 4.5);
    }
}
