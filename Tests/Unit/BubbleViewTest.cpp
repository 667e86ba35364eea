#include "ManualTime.h"
#include "Screens.h"

#include "AppKit/NSApplication+Private.h"
#include "BubblePanel.h"

namespace {

constexpr double dimmed = 0.6;

class BubbleViewTest : public ScreensTest {
protected:
    void SetUp() override {
        ScreensTest::SetUp();
        panel = std::make_shared<BubblePanel>(44.0, dimmed);
        button().onClick = [this] { heard += "click "; };
        button().onMenu = [this](const NSEvent&, NSView&) { heard += "menu "; };
        button().onMoved = [this] { heard += "moved "; };
        panel->setFrameOrigin({100, 200});
    }
    void TearDown() override {
        panel = nullptr;
        Timeline::install(nullptr);
        ScreensTest::TearDown();
    }

    BubbleView& button() { return *panel->button; }

    void at(NSPoint mouse, void (BubbleView::*handler)(const NSEvent&), NSUInteger modifiers = 0) {
        const NSEvent event(NSEventTypeLeftMouseDown, modifiers);
        const CurrentEvent current(event, mouse);
        (button().*handler)(event);
    }

    /// Until the button has faded, if it is to.
    void wait() { time.advance(10); }

    ManualTime& time = ManualTime::install();
    std::shared_ptr<BubblePanel> panel;
    std::string heard;
};

} // namespace

TEST_F(BubbleViewTest, ThreePointsAreAClickAndMoreADrag) {
    struct Case {
        const char* name;
        std::vector<NSPoint> path; ///< Of the pointer, from (110, 210).
        const char* heard;
        NSPoint origin;
    };
    for (const auto& [name, path, expected, origin] : {
             Case{"no move", {}, "click ", {100, 200}},
             Case{"exactly 3", {{113, 210}}, "click ", {100, 200}},
             Case{"3 aslant", {{112, 212}}, "click ", {100, 200}},
             Case{"a little more", {{113.1, 210}}, "moved ", {103.1, 200}},
             Case{"there and back", {{113.1, 210}, {110, 210}}, "moved ", {100, 200}},
             Case{"far away", {{500, 900}, {-40, -30}}, "moved ", {-50, -40}},
         }) {
        heard.clear();
        panel->setFrameOrigin({100, 200});
        at({110, 210}, &BubbleView::mouseDown);
        for (const NSPoint& point : path)
            at(point, &BubbleView::mouseDragged);
        at(path.empty() ? NSPoint{110, 210} : path.back(), &BubbleView::mouseUp);
        EXPECT_EQ(heard, expected) << name;
        EXPECT_DOUBLE_EQ(panel->frame().origin.x, origin.x) << name;
        EXPECT_DOUBLE_EQ(panel->frame().origin.y, origin.y) << name;
    }
}

TEST_F(BubbleViewTest, AControlClickLeavesADimButtonDim) {
    wait();
    at({110, 210}, &BubbleView::mouseDown, NSEventModifierFlagControl);
    at({110, 210}, &BubbleView::mouseUp, NSEventModifierFlagControl);
    EXPECT_EQ(panel->alphaValue(), dimmed);
    EXPECT_EQ(heard, "menu ");
}

TEST_F(BubbleViewTest, FadesWhenNothingHasHappenedForAWhile) {
    time.advance(2.49);
    EXPECT_EQ(panel->alphaValue(), 1.0);
    time.advance(0.16);
    EXPECT_NEAR(panel->alphaValue(), 0.8, 0.04);
    time.advance(0.2);
    EXPECT_EQ(panel->alphaValue(), dimmed);
    EXPECT_EQ(time.pending(), 0);
}

TEST_F(BubbleViewTest, WokenInTheMiddleOfAFadeItStaysAwake) {
    time.advance(2.6);
    ASSERT_LT(panel->alphaValue(), 1.0);
    at({110, 210}, &BubbleView::mouseEntered);
    EXPECT_EQ(panel->alphaValue(), 1.0);
    wait();
    EXPECT_EQ(panel->alphaValue(), 1.0);
}

TEST_F(BubbleViewTest, EverythingWakesItAndWhatItIsDoneWithLetsItRest) {
    using Step = std::function<void()>;
    struct Case {
        const char* name;
        Step wake;
        Step rest;
        bool staysAwake; ///< Between the two.
    };
    const auto send = [this](void (BubbleView::*handler)(const NSEvent&)) {
        return [this, handler] { at({110, 210}, handler); };
    };
    const Case cases[] = {
        {"pointer", send(&BubbleView::mouseEntered), send(&BubbleView::mouseExited), true},
        {"press", send(&BubbleView::mouseDown), send(&BubbleView::mouseUp), true},
        {"menu", send(&BubbleView::rightMouseDown), [] {}, false},
        {"cover", [this] { button().setBlurred(true); }, [this] { button().setBlurred(false); },
         true},
    };
    for (const auto& [name, wake, rest, staysAwake] : cases) {
        wait();
        ASSERT_EQ(panel->alphaValue(), dimmed) << name;
        wake();
        EXPECT_EQ(panel->alphaValue(), 1.0) << name;
        if (staysAwake) {
            wait();
            EXPECT_EQ(panel->alphaValue(), 1.0) << name;
        }
        rest();
        time.advance(2.4);
        EXPECT_EQ(panel->alphaValue(), 1.0) << name;
        wait();
        EXPECT_EQ(panel->alphaValue(), dimmed) << name;
    }
}

TEST_F(BubbleViewTest, TheCoverGoesOffUnderThePointer) {
    button().setBlurred(true);
    at({110, 210}, &BubbleView::mouseEntered);
    button().setBlurred(false);
    wait();
    EXPECT_EQ(panel->alphaValue(), 1.0);
}

TEST_F(BubbleViewTest, OneTimerAtMostAndNoneThatKeepsAPanel) {
    for (int i = 0; i < 5; ++i)
        at({110, 210}, &BubbleView::mouseUp);
    EXPECT_EQ(time.pending(), 1);
    const std::weak_ptr<NSView> view = panel->button;
    panel = nullptr;
    EXPECT_TRUE(view.expired());
    wait();
}
