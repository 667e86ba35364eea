// Where the buttons stand, what wakes them, and what becomes of them. Drags are the desktop's.
#include "ManualTime.h"
#include "Screens.h"

#include "AppKit/Qt/Application/CurrentEvent.h"
#include "Bubble.h"
#include "Cover.h"
#include "Prefs.h"

namespace {

class BubbleTest : public ScreensTest {
protected:
    void SetUp() override {
        ScreensTest::SetUp();
        for (const uint32_t number : {7u, 9u})
            Prefs::shared().setButtonSpot(number, 1.0, 0.62);
        bubble->start();
    }
    void TearDown() override {
        Cover::shared()->hide();
        bubble = nullptr;
        Timeline::install(nullptr);
        ScreensTest::TearDown();
    }

    BubblePanel& panel() { return *bubble->panels().at(7); }

    /// One screen, number 7, that leaves the rectangle to its windows.
    void useScreen(const CGRect& visibleFrame) {
        auto only = display(7, CGRectMake(0, 0, 1440, 900));
        only.visibleFrame = visibleFrame;
        screens().setDisplays({});
        screens().setDisplays({only});
    }

    void mouse(void (BubbleView::*handler)(const NSEvent&)) {
        const NSEvent event(NSEventTypeLeftMouseDown, 0);
        const CurrentEvent current(event, NSPoint{110, 210});
        (*panel().button.*handler)(event);
    }

    ManualTime& time = ManualTime::install();
    std::shared_ptr<Bubble> bubble = std::make_shared<Bubble>();
};

} // namespace

TEST_F(BubbleTest, PlacesEachButtonFromItsStoredSpot) {
    const std::tuple<const char*, CGRect, ButtonSpot, NSPoint> cases[] = {
        {"untouched", {{0, 0}, {1440, 875}}, {1.0, 0.62}, {1390, 317.22}},
        {"just left", {{0, 0}, {1440, 875}}, {0.49, 0.0}, {6, 825}},
        {"just right", {{0, 0}, {1440, 875}}, {0.5, 0.0}, {1390, 825}},
        {"taken as stored", {{0, 0}, {1440, 875}}, {7.0, 1.5}, {1390, -403.5}},
        {"panels around", {{50, 30}, {1300, 800}}, {0.0, 1.0}, {56, 36}},
        {"too low for it", {{0, 0}, {1440, 40}}, {1.0, 0.62}, {1390, -10}},
    };
    for (const auto& [name, visibleFrame, spot, origin] : cases) {
        Prefs::shared().setButtonSpot(7, spot.side, spot.down);
        useScreen(visibleFrame);
        EXPECT_NEAR(panel().frame().origin.x, origin.x, 1e-9) << name;
        EXPECT_NEAR(panel().frame().origin.y, origin.y, 1e-9) << name;
    }
}

TEST_F(BubbleTest, EverythingWakesItAndWhatItIsDoneWithLetsItRest) {
    const auto blur = [this](bool blurred) {
        return [this, blurred] { panel().button->setBlurred(blurred); };
    };
    const auto send = [this](void (BubbleView::*handler)(const NSEvent&)) {
        return [this, handler] { mouse(handler); };
    };
    using Step = std::function<void()>;
    panel().button->onClick = [] {};
    const std::pair<Step, Step> cases[] = {
        {send(&BubbleView::mouseEntered), send(&BubbleView::mouseExited)},
        {send(&BubbleView::mouseDown), send(&BubbleView::mouseUp)},
        {blur(true), blur(false)},
    };
    for (const auto& [wake, rest] : cases) {
        time.advance(10);
        ASSERT_EQ(panel().alphaValue(), 0.6);
        wake();
        time.advance(10);
        EXPECT_EQ(panel().alphaValue(), 1.0);
        rest();
        time.advance(2.4);
        EXPECT_EQ(panel().alphaValue(), 1.0);
        time.advance(10);
        EXPECT_EQ(panel().alphaValue(), 0.6);
    }
    mouse(&BubbleView::mouseEntered); // As the cover goes off under the pointer.
    blur(true)();
    blur(false)();
    time.advance(10);
    EXPECT_EQ(panel().alphaValue(), 1.0);
}
