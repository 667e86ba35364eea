#include "ManualTime.h"
#include "Screens.h"

#include "AppKit/AppKit.h"
#include "AppKit/PanelPicture+Private.h"
#include "AppKit/PanelWindow+Private.h"

#include <QApplication>
#include <QEnterEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QToolTip>
#include <QWidget>
#include <QWindow>

namespace {

/// Says what happens to it.
struct TestView : NSView {
    using NSView::NSView;
    void mouseDown(const NSEvent& event) override { note("down", event); }
    void mouseDragged(const NSEvent& event) override { note("dragged", event); }
    void mouseUp(const NSEvent& event) override { note("up", event); }
    void rightMouseDown(const NSEvent& event) override { note("right", event); }
    void mouseEntered(const NSEvent&) override { heard += "entered "; }
    void mouseExited(const NSEvent&) override { heard += "exited "; }
    bool acceptsFirstMouse(const std::optional<NSEvent>&) const override { return true; }
    void drawRect(const NSRect&) override {
        NSColor::colorWithSRGBRed(0, 0, 0, 1).setFill();
        NSBezierPath::bezierPathWithOvalInRect(bounds())->fill();
    }

    void note(const char* what, const NSEvent& event) {
        heard += what;
        if (event.modifierFlags() & NSEventModifierFlagControl) heard += "+control";
        heard += ' ';
        mouse = NSEvent::mouseLocation();
        if (act) act();
    }

    std::string heard;
    NSPoint mouse;
    std::function<void()> act;
};

class PanelTest : public ScreensTest {
protected:
    void SetUp() override {
        ScreensTest::SetUp();
        panel = std::make_unique<NSPanel>(CGRectMake(100, 200, 20, 20),
                                          NSWindowStyleMaskNonactivatingPanel,
                                          NSBackingStoreBuffered, false);
        panel->setTitle("A panel");
        panel->setLevel(1001);
        panel->setContentView(view);
        view->addTrackingArea(std::make_shared<NSTrackingArea>(
            CGRectMake(0, 0, 0, 0), NSTrackingMouseEnteredAndExited, view.get(), nullptr));
        panel->orderFrontRegardless();
    }
    void TearDown() override {
        panel = nullptr;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ScreensTest::TearDown();
    }

    static QWidget* widget() {
        for (QWidget* each : QApplication::topLevelWidgets())
            if (each->windowTitle() == "A panel" && each->isVisible()) return each;
        return nullptr;
    }

    void send(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons,
              const QPointF& where = {}, Qt::KeyboardModifiers modifiers = {}) {
        QMouseEvent event(type, {}, where, button, buttons, modifiers);
        QApplication::sendEvent(widget()->windowHandle(), &event);
    }

    static void send(QEvent::Type type) {
        QEnterEvent enter({}, {}, {});
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(widget(), type == QEvent::Enter ? &enter : &leave);
    }

    std::shared_ptr<TestView> view = std::make_shared<TestView>(CGRectMake(0, 0, 20, 20));
    std::unique_ptr<NSPanel> panel;
};

} // namespace

TEST_F(PanelTest, BringsTheMouseToItsView) {
    send(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, {10, 1000});
    EXPECT_EQ(view->mouse, (NSPoint{10, 80}));
    send(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, {30.5, 900});
    EXPECT_EQ(view->mouse, (NSPoint{30.5, 180}));
    send(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    send(QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
    send(QEvent::MouseButtonPress, Qt::RightButton, Qt::RightButton, {}, Qt::ControlModifier);
    send(QEvent::MouseButtonRelease, Qt::RightButton, Qt::NoButton);
    send(QEvent::MouseButtonPress, Qt::MiddleButton, Qt::MiddleButton);
    send(QEvent::MouseButtonDblClick, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::Enter);
    send(QEvent::Leave);
    EXPECT_EQ(view->heard, "down dragged up right+control down entered exited ");
    send(QEvent::Enter);
    view->heard.clear();
    PanelWindow::windowGone(widget()->winId()); // Another one stands there now.
    send(QEvent::Enter);
    EXPECT_EQ(view->heard, "exited entered ");
}

TEST_F(PanelTest, FinishesOnePressBeforeTheNext) {
    send(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseButtonPress, Qt::RightButton, Qt::LeftButton | Qt::RightButton);
    send(QEvent::MouseButtonRelease, Qt::RightButton, Qt::LeftButton);
    send(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(view->heard, "down dragged up ");
}

TEST_F(PanelTest, LeavesTheMouseToAMenuUntilThatCloses) {
    const auto menu = std::make_shared<NSMenu>();
    menu->addItem(std::make_shared<NSMenuItem>("Item", nullptr, ""));
    view->act = [&] {
        QTimer::singleShot(0, [&] {
            send(QEvent::Leave);
            EXPECT_EQ(view->heard, "entered down ");
            QApplication::activePopupWidget()->close();
        });
        NSMenu::popUpContextMenu(menu, NSEvent(NSEventTypeLeftMouseDown, 0), *view);
        view->heard += "closed ";
        view->act = nullptr;
    };
    send(QEvent::Enter);
    send(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(view->heard, "entered down exited closed ");
}

TEST_F(PanelTest, ATipThatIsReadChangesWithTheView) {
    view->setToolTip("before");
    send(QEvent::Enter);
    QToolTip::showText({}, "before", widget());
    view->setToolTip("after");
    EXPECT_EQ(QToolTip::text(), "after");
    send(QEvent::Leave);
    view->setToolTip("later");
    EXPECT_EQ(QToolTip::text(), "after") << "of another window, for all it knows";
    QToolTip::hideText();
}

TEST_F(PanelTest, ShowsThroughWhatLiesBehindAndNoPopupOfItsOwn) {
    screens().around = {{-2, -2, 24, 24}, {}};
    for (int i = 0; i < 24 * 24; ++i)
        screens().around.pixels.push_back(i % 24 < 12 ? 0xff0000 : 0xffffff);
    QWidget popup(nullptr, Qt::ToolTip);
    popup.setGeometry(widget()->geometry().adjusted(10, -10, 100, 10));
    popup.show();
    panel->setAlphaValue(0.1);
    const QColor right = widget()->grab().toImage().pixelColor(18, 10);
    screens().around = {};
    EXPECT_GT(right.red(), 200);
    EXPECT_LT(right.green(), 20);
}

TEST_F(PanelTest, MayEndInTheMiddleOfItsOwnEvent) {
    const std::weak_ptr<TestView> weak = view;
    view->act = [this, keep = std::string(100, 'x')] {
        view = nullptr;
        panel = nullptr;
        EXPECT_EQ(keep.size(), 100u); // The view and what it does are still there.
    };
    send(QEvent::MouseButtonPress, Qt::RightButton, Qt::RightButton);
    EXPECT_TRUE(weak.expired());
    EXPECT_FALSE(widget());
    EXPECT_TRUE(screens().levels.empty());
}

TEST(PanelPicture, OnlyItsInkHasAShape) {
    QImage picture(5, 3, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    picture.setPixelColor(1, 1, QColor(0, 0, 0, 1));
    picture.setPixelColor(2, 1, Qt::white);
    picture.setPixelColor(4, 1, Qt::white);
    picture.setPixelColor(0, 2, Qt::white);
    EXPECT_EQ(inkOf(picture),
              (std::vector<WindowServer::PixelRect>{{1, 1, 2, 1}, {4, 1, 1, 1}, {0, 2, 1, 1}}));
}

TEST(PanelPicture, GuessesWhatLiesBehindFromAround) {
    QImage disc(20, 20, QImage::Format_ARGB32_Premultiplied);
    disc.fill(Qt::black);
    WindowServer::Snapshot around{{-2, -2, 24, 24}, {}};
    for (int y = 0; y < 24; ++y)
        for (int x = 0; x < 24; ++x)
            around.pixels.push_back(x < 12 ? 0xff0000 : 0x0000ff);
    const QImage behind = estimateBehind(disc, around);
    ASSERT_EQ(behind.size(), disc.size());
    EXPECT_GT(qRed(behind.pixel(0, 10)), 200);
    EXPECT_GT(qBlue(behind.pixel(19, 10)), 200);
    EXPECT_NEAR(qRed(behind.pixel(10, 10)), 128, 30);
    EXPECT_TRUE(estimateBehind(disc, {}).isNull());
}

TEST(Time, ATimerFiresOnceOrAgainAndAgainUntilItIsInvalid) {
    ManualTime& time = ManualTime::install();
    int once = 0;
    int often = 0;
    NSTimer::scheduledTimerWithTimeInterval(1, false, [&](const auto&) { ++once; });
    const auto repeating = NSTimer::scheduledTimerWithTimeInterval(1, true, [&](const auto& timer) {
        if (++often == 3) timer->invalidate();
    });
    const auto never =
        NSTimer::scheduledTimerWithTimeInterval(1, false, [](const auto&) { FAIL(); });
    never->invalidate();
    time.advance(10);
    EXPECT_EQ(once, 1);
    EXPECT_EQ(often, 3);
    EXPECT_EQ(time.pending(), 0);
    Timeline::install(nullptr);
}

TEST(Time, EaseOutIsItsCurve) {
    // Points of the cubic Bezier curve (0, 0) (0, 0) (0.58, 1) (1, 1), worked out by parameter.
    const auto pace = CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseOut);
    for (const double s : {0.1, 0.5, 0.9})
        EXPECT_NEAR(pace->progressAt(3 * (1 - s) * s * s * 0.58 + s * s * s),
                    3 * (1 - s) * s * s + s * s * s, 1e-3);
}
