#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/TestWindow.h"

#include <algorithm>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

constexpr uint8_t aKey = 38;

std::vector<TestWindow::Event> without(uint8_t type, std::vector<TestWindow::Event> events) {
    std::erase_if(events, [type](const auto& event) { return event.type == type; });
    return events;
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

TEST_F(CoveredPaper, HearsEveryButtonAndTheWheelWhereTheyHappen) {
    const std::pair<int, int> points[] = {{0, 0},    {1919, 0},    {0, 1040},   {960, 540},
                                          {1920, 0}, {3199, 1023}, {2500, 700}, {1919, 1079}};
    for (const auto& [x, y] : points)
        for (const uint8_t button : {1, 2, 3, 4, 5}) {
            desktop.input.move(x, y);
            desktop.input.click(button);
            const std::vector<TestWindow::Event> expected = {{XCB_BUTTON_PRESS, button, x, y},
                                                             {XCB_BUTTON_RELEASE, button, x, y}};
            EXPECT_EQ(without(XCB_MOTION_NOTIFY, paper.takeEvents()), expected);
        }
}

TEST_F(CoveredPaper, HearsADrag) {
    desktop.input.move(100, 100);
    desktop.input.press(1);
    desktop.input.move(2600, 900);
    desktop.input.release(1);

    const auto events = paper.takeEvents();
    const TestWindow::Event moved = {XCB_MOTION_NOTIFY, 0, 2600, 900};
    EXPECT_NE(std::find(events.begin(), events.end(), moved), events.end());
    EXPECT_EQ(events.back(), (TestWindow::Event{XCB_BUTTON_RELEASE, 1, 2600, 900}));
}

TEST_F(CoveredPaper, HearsTyping) {
    desktop.input.move(1000, 500);
    paper.takeEvents();
    desktop.input.strike(aKey);

    const std::vector<TestWindow::Event> expected = {{XCB_KEY_PRESS, aKey, 1000, 500},
                                                     {XCB_KEY_RELEASE, aKey, 1000, 500}};
    EXPECT_EQ(paper.takeEvents(), expected);
}

TEST_F(CoveredPaper, KeepsTheFocusThroughManyToggles) {
    for (int i = 0; i < 10; ++i) {
        agent.uncover();
        EXPECT_EQ(desktop.screen.focus(), paper.number());
        agent.cover();
        EXPECT_EQ(desktop.screen.focus(), paper.number());
    }
    for (const auto& event : paper.takeEvents())
        EXPECT_NE(event.type, XCB_FOCUS_OUT);
}

TEST_F(CoveredPaper, IsNeverShutOffByTheCoversInputRegion) {
    const auto expectNoInput = [&](const char* when) {
        for (const ScreenWindow& cover : agent.covers())
            EXPECT_EQ(desktop.screen.inputRectangles(cover.number), 0U) << when;
    };

    expectNoInput("at first");
    agent.uncover();
    expectNoInput("while clear");
    agent.cover();
    expectNoInput("covered again");
    desktop.server->xrandr({"--setmonitor", "C", "640/170x480/135+2000+100", "none"});
    desktop.server->xrandr({"--delmonitor", "B"});
    EXPECT_TRUE(await([&] { return agent.isCovered(); }));
    expectNoInput("after the monitors have changed");
}
