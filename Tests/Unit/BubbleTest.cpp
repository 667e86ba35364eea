// Where the buttons stand and what wakes them. Drags are the desktop's.
#include "Offscreen.h"

#include "AppKit/AppKit.h"
#include "Bubble.h"
#include "Prefs.h"

namespace {

struct BubbleTest : Offscreen {
    BubbleTest() {
        Prefs::shared().setButtonSpot(7, 1.0, 0.62);
        bubble->start();
    }

    BubblePanel& panel() const { return *bubble->panels().at(7); }
    void mouse(void (BubbleView::*handler)(const NSEvent&)) const {
        (*panel().button.*handler)(NSEvent(NSEventTypeLeftMouseDown, 0));
    }

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
        auto screen = display(7, CGRectMake(0, 0, 1440, 900));
        screen.visibleFrame = visibleFrame;
        connect({screen});
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
    const std::pair<Step, Step> cases[] = {
        {send(&BubbleView::mouseEntered), send(&BubbleView::mouseExited)},
        {send(&BubbleView::mouseDown), send(&BubbleView::mouseUp)},
        {blur(true), blur(false)},
    };
    panel().button->onClick = [] {};
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
