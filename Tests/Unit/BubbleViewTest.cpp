#include "ManualTime.h"
#include "Screens.h"

#include "AppKit/Qt/Application/CurrentEvent.h"
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
    using Path = std::vector<NSPoint>; ///< Of the pointer, from (110, 210).
    for (const auto& [path, expected, origin] : {
             std::tuple<Path, const char*, NSPoint>{{{110, 210}}, "click ", {100, 200}},
             {{{113, 210}}, "click ", {100, 200}},
             {{{112, 212}}, "click ", {100, 200}},
             {{{113.125, 210}}, "moved ", {103.125, 200}},
             {{{113.125, 210}, {110, 210}}, "moved ", {100, 200}},
         }) {
        heard.clear();
        panel->setFrameOrigin({100, 200});
        at({110, 210}, &BubbleView::mouseDown);
        for (const NSPoint& point : path)
            at(point, &BubbleView::mouseDragged);
        at(path.back(), &BubbleView::mouseUp);
        EXPECT_EQ(heard, expected);
        EXPECT_EQ(panel->frame().origin, origin);
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
    at({110, 210}, &BubbleView::mouseEntered);
    wait();
    EXPECT_EQ(panel->alphaValue(), 1.0);
    at({110, 210}, &BubbleView::mouseExited);
    time.advance(2.9);
    EXPECT_EQ(panel->alphaValue(), dimmed);
    EXPECT_EQ(time.pending(), 0);
}

TEST_F(BubbleViewTest, EverythingWakesItAndWhatItIsDoneWithLetsItRest) {
    using Step = std::function<void()>;
    const auto send = [this](void (BubbleView::*handler)(const NSEvent&)) {
        return [this, handler] { at({110, 210}, handler); };
    };
    const std::pair<Step, Step> cases[] = {
        {send(&BubbleView::mouseEntered), send(&BubbleView::mouseExited)},
        {send(&BubbleView::mouseDown), send(&BubbleView::mouseUp)},
        {send(&BubbleView::rightMouseDown), {}},
        {[this] { button().setBlurred(true); }, [this] { button().setBlurred(false); }},
    };
    for (const auto& [wake, rest] : cases) {
        wait();
        ASSERT_EQ(panel->alphaValue(), dimmed);
        wake();
        EXPECT_EQ(panel->alphaValue(), 1.0);
        if (rest) {
            wait();
            EXPECT_EQ(panel->alphaValue(), 1.0);
            rest();
        }
        time.advance(2.4);
        EXPECT_EQ(panel->alphaValue(), 1.0);
        wait();
        EXPECT_EQ(panel->alphaValue(), dimmed);
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
