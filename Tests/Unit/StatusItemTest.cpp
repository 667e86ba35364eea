#include "AppKit/AppKit.h"
#include "AppKit/NSImage+Private.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>

namespace {

struct Clicks : NSObject {
    void clicked() {
        ++count;
        event = NSApp->currentEvent();
    }
    int count = 0;
    std::optional<NSEvent> event;
};

class StatusItemTest : public testing::Test {
protected:
    void SetUp() override {
        button->setTarget(clicks);
        button->setAction(&Clicks::clicked);
    }

    const NSEvent leftUp{NSEventTypeLeftMouseUp, NSEventModifierFlagControl};
    const NSEvent rightUp{NSEventTypeRightMouseUp, 0};
    std::shared_ptr<Clicks> clicks = std::make_shared<Clicks>();
    std::shared_ptr<NSStatusItem> item =
        NSStatusBar::systemStatusBar().statusItemWithLength(NSSquareStatusItemLength);
    std::shared_ptr<NSStatusBarButton> button = item->button();
};

} // namespace

TEST_F(StatusItemTest, SendsItsActionOnTheEventsOfItsMask) {
    struct Case {
        NSUInteger mask;
        int left, right;
    };
    for (const auto& [mask, left, right] :
         {Case{NSEventMaskLeftMouseUp, 1, 0}, Case{NSEventMaskRightMouseUp, 0, 1}, Case{0x14, 1, 1},
          Case{0, 0, 0}}) {
        button->sendActionOn(mask);
        clicks->count = 0;
        button->mouseUp(leftUp);
        EXPECT_EQ(clicks->count, left) << "mask " << mask;
        button->rightMouseUp(rightUp);
        EXPECT_EQ(clicks->count, left + right) << "mask " << mask;
    }
}

TEST_F(StatusItemTest, TheClickIsTheCurrentEventWhileTheActionRuns) {
    button->mouseUp(leftUp);
    ASSERT_TRUE(clicks->event);
    EXPECT_EQ(clicks->event->type(), NSEventTypeLeftMouseUp);
    EXPECT_EQ(clicks->event->modifierFlags(), 0x40000u);
    EXPECT_FALSE(NSApp->currentEvent());
}

TEST_F(StatusItemTest, HoldsItsTargetWeakly) {
    clicks = nullptr;
    button->mouseUp(leftUp);
}

TEST_F(StatusItemTest, KeepsWhatItShows) {
    const auto image = NSImage::imageWithSystemSymbolName("eye", "Show");
    button->setImage(image);
    button->setToolTip("A tip");
    EXPECT_EQ(button->image(), image);
    EXPECT_EQ(button->toolTip(), "A tip");
    button->setImage(nullptr);
    EXPECT_EQ(button->image(), nullptr);
}

TEST(NSImage, IsNullForAnUnknownSymbol) {
    EXPECT_EQ(NSImage::imageWithSystemSymbolName("no.such.symbol", std::nullopt), nullptr);
    EXPECT_EQ(NSImage::imageWithSystemSymbolName("", std::nullopt), nullptr);
}

TEST(NSImage, DrawsEachSymbolSharpAtEachSize) {
    const auto draw = [](const char* name, int size) {
        const auto image = NSImage::imageWithSystemSymbolName(name, std::nullopt);
        image->setTemplate(true);
        return iconFrom(*image).pixmap(QSize(size, size), 1.0);
    };
    for (const int size : {16, 22, 24, 32}) {
        const QImage eye = draw("eye", size).toImage();
        EXPECT_EQ(eye.size(), QSize(size, size));
        EXPECT_EQ(eye.pixelColor(size / 2, size / 2), QColor(Qt::black));
        EXPECT_EQ(eye.pixelColor(0, size - 1).alpha(), 0);
        EXPECT_NE(eye, draw("eye.slash", size).toImage());
    }
    EXPECT_EQ(draw("eye", 22).cacheKey(), draw("eye", 22).cacheKey());
}

TEST(NSImage, StandsSquareInAPlaceOfAnyShape) {
    const auto image = NSImage::imageWithSystemSymbolName("eye.slash", std::nullopt);
    const QImage square = iconFrom(*image).pixmap(QSize(24, 24), 1.0).toImage();
    for (const auto& [place, inner] :
         {std::pair{QSize(24, 48), QRect(0, 12, 24, 24)}, {QSize(40, 24), QRect(8, 0, 24, 24)}}) {
        const QImage drawn = iconFrom(*image).pixmap(place, 1.0).toImage();
        EXPECT_EQ(drawn.size(), place);
        EXPECT_EQ(drawn.copy(inner), square);
    }
}
