// What wakes the buttons, and when they dim. Where they stand and drags are the desktop's.
#include "Offscreen.h"

#include "AppKit/AppKit.h"
#include "Bubble.h"

namespace {

struct BubbleTest : Offscreen {
    BubbleTest() {
        bubble->start();
        button().onClick = [] {};
    }

    BubblePanel& panel() const { return *bubble->panels().at(7); }
    BubbleView& button() const { return *panel().button; }
    void expectAlphaAfter(double seconds, double alpha) const {
        time.advance(seconds);
        EXPECT_EQ(panel().alphaValue(), alpha);
    }

    std::shared_ptr<Bubble> bubble = std::make_shared<Bubble>();
};

} // namespace

TEST_F(BubbleTest, EverythingWakesItAndWhatItIsDoneWithLetsItRest) {
    const NSEvent event(NSEventTypeLeftMouseDown, 0);
    using Step = std::function<void()>;
    const std::pair<Step, Step> cases[] = {
        {[&] { button().mouseEntered(event); }, [&] { button().mouseExited(event); }},
        {[&] { button().mouseDown(event); }, [&] { button().mouseUp(event); }},
        {[&] { button().setBlurred(true); }, [&] { button().setBlurred(false); }},
    };
    for (const auto& [wake, rest] : cases) {
        expectAlphaAfter(10, 0.6);
        wake();
        expectAlphaAfter(10, 1.0);
        rest();
        expectAlphaAfter(2.4, 1.0);
    }
    expectAlphaAfter(10, 0.6);
    button().mouseEntered(event); // As the cover goes off under the pointer.
    button().setBlurred(true);
    button().setBlurred(false);
    expectAlphaAfter(10, 1.0);
}
