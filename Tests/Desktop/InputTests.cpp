// The covered screen is in nobody's way.
#include "Harness/Dice.h"
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/Soak.h"

using namespace Harness;

struct CoveredPaper : OnDesktop {
    Paper paper{desktop};
};

TEST_F(CoveredPaper, HearsAllInItsOrderAndKeepsTheFocus) {
    paper.takeFocus();
    ASSERT_NO_FATAL_FAILURE(start());
    paper.takeEvents();
    for (int i = 0; i < rounds(25, 500); ++i) {
        agent->cover();
        EXPECT_EQ(desktop.screen.focus(), paper.number());
        for (const auto& cover : agent->covers())
            EXPECT_EQ(desktop.screen.inputRectangles(cover.number), 0U);
        agent->uncover();
        EXPECT_EQ(desktop.screen.focus(), paper.number());
    }
    for (const auto& event : paper.takeEvents())
        EXPECT_NE(event.type, XCB_FOCUS_OUT);

    for (int quickClicks = 0; quickClicks < 3; ++quickClicks)
        agent->toggle();
    expectCovered(true); // After the first one too.
    Dice dice;
    const std::vector<Point> corners = {{0, 0}, {1919, 0}, {1920, 0}, {3199, 1023}, {1919, 1079}};
    for (size_t i = 0; i < static_cast<size_t>(rounds(250, 5000)); ++i) {
        const auto [x, y] = i < corners.size() ? corners[i]
                                               : Point{static_cast<int>(dice.below(3200)),
                                                       static_cast<int>(dice.below(1000))};
        if (std::ranges::any_of(agent->buttons(), [x = x, y = y](const auto& button) {
                return button.area.contains({x, y, 1, 1});
            }))
            continue;
        // A button, the wheel in any direction, or a key.
        const auto button = static_cast<uint8_t>(dice.below(8));
        const uint8_t detail = button ? button : aKey;
        const uint8_t press = button ? XCB_BUTTON_PRESS : XCB_KEY_PRESS;
        desktop.input.move(x, y);
        button ? desktop.input.click(button) : desktop.input.strike(aKey);
        auto heard = paper.takeEvents();
        std::erase_if(heard, [](const auto& event) { return event.type == XCB_MOTION_NOTIFY; });
        // The protocol numbers a release next to its press.
        const std::vector<TestWindow::Event> expected = {
            {press, detail, x, y}, {static_cast<uint8_t>(press + 1), detail, x, y}};
        ASSERT_EQ(heard, expected) << "event " << i;
    }
}
