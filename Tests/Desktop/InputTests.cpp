// The covered screen is in nobody's way.
#include "Harness/Keys.h"
#include "Harness/OnDesktop.h"
#include "Harness/Soak.h"

#include <algorithm>
#include <random>

using namespace Harness;

namespace {

std::vector<TestWindow::Event> without(uint8_t type, std::vector<TestWindow::Event> events) {
    std::erase_if(events, [type](const auto& event) { return event.type == type; });
    return events;
}

/// A press, of a key or a button, and the release, which the protocol numbers next.
std::vector<TestWindow::Event> struck(uint8_t press, uint8_t detail, int x, int y) {
    return {{press, detail, x, y}, {static_cast<uint8_t>(press + 1), detail, x, y}};
}

struct CoveredPaper : testing::Test {
    CoveredPaper() : paper(desktop.display(), desktop.screen.bounds()), agent(desktop) {
        paper.lower();
        paper.show();
        paper.takeFocus();
        agent.cover();
        paper.takeEvents();
    }

    Desktop desktop;
    TestWindow paper;
    Agent agent;
};

} // namespace

TEST_F(CoveredPaper, HearsManyEventsInTheirOrder) {
    std::mt19937 random(3);
    const auto upTo = [&](unsigned limit) { return static_cast<int>(random() % limit); };
    const std::vector<Point> corners = {{0, 0}, {1919, 0}, {1920, 0}, {3199, 1023}, {1919, 1079}};
    for (int i = 0; i < rounds(250, 5000); ++i) {
        const size_t corner = static_cast<size_t>(i);
        const auto [x, y] =
            corner < corners.size() ? corners[corner] : Point{upTo(3200), upTo(1000)};
        if (std::ranges::any_of(agent.buttons(), [&](const auto& button) {
                return button.area.contains({x, y, 1, 1});
            }))
            continue;
        // A button, the wheel in any direction, or a key.
        const auto button = static_cast<uint8_t>(upTo(8));
        desktop.input.move(x, y);
        if (button == 0)
            desktop.input.strike(aKey);
        else
            desktop.input.click(button);
        ASSERT_EQ(without(XCB_MOTION_NOTIFY, paper.takeEvents()),
                  button == 0 ? struck(XCB_KEY_PRESS, aKey, x, y)
                              : struck(XCB_BUTTON_PRESS, button, x, y))
            << "event " << i;
    }
}

TEST_F(CoveredPaper, HearsADragThroughWhichTheCoverGoesAndComes) {
    desktop.input.move(100, 100);
    desktop.input.press(1);
    for (const bool covered : {false, true}) {
        desktop.input.strikeTogether(chordKeys);
        ASSERT_SOON(agent.visibleCovers().empty() != covered);
        const int x = covered ? 2600 : 900;
        desktop.input.move(x, 500);
        const auto events = paper.takeEvents();
        const TestWindow::Event moved = {XCB_MOTION_NOTIFY, 0, x, 500};
        EXPECT_NE(std::ranges::find(events, moved), events.end());
    }
    desktop.input.release(1);
    EXPECT_EQ(paper.takeEvents().back(), (TestWindow::Event{XCB_BUTTON_RELEASE, 1, 2600, 500}));
}

TEST_F(CoveredPaper, KeepsTheFocusThroughManyToggles) {
    const auto coversTakeNoInput = [&] {
        return std::ranges::all_of(agent.covers(), [&](const auto& cover) {
            return desktop.screen.inputRectangles(cover.number) == 0;
        });
    };
    for (int i = 0; i < rounds(25, 500); ++i) {
        agent.uncover();
        EXPECT_EQ(desktop.screen.focus(), paper.number());
        agent.cover();
        EXPECT_EQ(desktop.screen.focus(), paper.number());
        EXPECT_TRUE(coversTakeNoInput());
    }
    for (const auto& event : paper.takeEvents())
        EXPECT_NE(event.type, XCB_FOCUS_OUT);
    for (int quickClicks = 0; quickClicks < 3; ++quickClicks)
        agent.toggle();
    const auto isClear = [&] { return agent.visibleCovers().empty(); };
    EXPECT_TRUE(await(isClear) && holdsFor(500ms, isClear));
    agent.cover();
    desktop.server->xrandr({"--setmonitor", "C", "640/170x480/135+2000+100", "none"});
    desktop.server->xrandr({"--delmonitor", "B"});
    EXPECT_SOON(agent.isCovered());
    EXPECT_TRUE(coversTakeNoInput()) << "after the monitors have changed";
}
