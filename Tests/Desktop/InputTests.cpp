#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Keys.h"
#include "Harness/Soak.h"
#include "Harness/TestWindow.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

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

    void strikeTheChord() const {
        const uint8_t chord[] = {37, 64, 133, 57}; // Control, Alt, Super, N
        for (const uint8_t key : chord)
            desktop.input.hold(key);
        for (const uint8_t key : chord)
            desktop.input.letGo(key);
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
        for (const uint8_t button : {1, 2, 3, 4, 5, 6, 7}) {
            desktop.input.move(x, y);
            desktop.input.click(button);
            EXPECT_EQ(without(XCB_MOTION_NOTIFY, paper.takeEvents()),
                      struck(XCB_BUTTON_PRESS, button, x, y));
        }
}

TEST_F(CoveredPaper, HearsManyEventsInTheirOrder) {
    std::mt19937 random(3);
    const auto upTo = [&](unsigned limit) { return static_cast<int>(random() % limit); };
    const auto buttons = agent.buttons();
    for (int i = 0; i < rounds(250, 5000);) {
        const int x = upTo(3200);
        const int y = upTo(1000);
        const auto isHere = [&](const ScreenWindow& button) {
            return x >= button.area.x && x < button.area.right() && y >= button.area.y &&
                   y < button.area.bottom();
        };
        if (std::ranges::any_of(buttons, isHere)) continue;
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
        ++i;
    }
}

TEST_F(CoveredPaper, HearsADragThroughWhichTheCoverGoesAndComes) {
    desktop.input.move(100, 100);
    desktop.input.press(1);
    for (const bool covered : {false, true}) {
        strikeTheChord();
        ASSERT_TRUE(await([&] { return agent.visibleCovers().empty() != covered; }));
        const int x = covered ? 2600 : 900;
        desktop.input.move(x, 500);
        const auto events = paper.takeEvents();
        const TestWindow::Event moved = {XCB_MOTION_NOTIFY, 0, x, 500};
        EXPECT_NE(std::ranges::find(events, moved), events.end());
    }
    desktop.input.release(1);
    EXPECT_EQ(paper.takeEvents().back(), (TestWindow::Event{XCB_BUTTON_RELEASE, 1, 2600, 500}));
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

    EXPECT_EQ(paper.takeEvents(), struck(XCB_KEY_PRESS, aKey, 1000, 500));
}

TEST_F(CoveredPaper, KeepsTheFocusThroughManyToggles) {
    for (int i = 0; i < rounds(25, 500); ++i) {
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
