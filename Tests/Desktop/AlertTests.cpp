// The alert about one feature and the edition window: both stand above a covered screen and take
// the keyboard themselves.
#include "Harness/Browser.h"
#include "Harness/Keys.h"
#include "Harness/OnDesktop.h"

#include <algorithm>
#include <csignal>

using namespace Harness;

namespace {

const std::string shop = "https://vardek.example/buy/nimbrel/\n";

struct Neighbours {
    const char* names;
    bool windowManager;
    bool compositor;
};

constexpr Neighbours allNeighbours[] = {
    {"none", false, false},
    {"a window manager", true, false},
    {"a compositor", false, true},
    {"both", true, true},
};

bool hears(TestWindow& window, uint8_t key) {
    return std::ranges::any_of(window.takeEvents(), [=](const auto& event) {
        return event.type == XCB_KEY_PRESS && event.detail == key;
    });
}

struct Alerts : BesidePaper {
    std::vector<ScreenWindow> panels() const { return agent->panels(); }
    bool isOnTop() const {
        const auto open = panels();
        return !open.empty() && desktop.screen.windows().back().number == open.back().number;
    }

    /// Opens the menu at a button, and goes to the row that many steps down.
    void goToRow(int steps, size_t button = 0) const {
        click(agent->buttons().at(button).area, 3);
        ASSERT_TRUE(await([&] { return agent->menus().size() == 1; }));
        strike(std::vector<uint8_t>(static_cast<size_t>(steps), downKey));
    }

    void expectPanel() const {
        ASSERT_TRUE(await([&] { return panels().size() == 1 && agent->menus().empty(); }));
        EXPECT_TRUE(await([&] { return desktop.screen.focus() == panels().at(0).number; }));
        EXPECT_TRUE(await([&] { return isOnTop(); }));
    }
    void openAlert(size_t button = 0) const {
        ASSERT_NO_FATAL_FAILURE(goToRow(4, button));
        strike({rightKey});
        ASSERT_TRUE(await([&] { return agent->menus().size() == 2; }));
        strike({returnKey});
        expectPanel();
    }
    void openSummit() const {
        ASSERT_NO_FATAL_FAILURE(goToRow(3));
        strike({returnKey});
        expectPanel();
    }

    void expectClosed(const char* when = "") const {
        EXPECT_TRUE(await([&] { return panels().empty(); })) << when;
    }
};

} // namespace

TEST_F(Alerts, StandAboveTheCoverAndBorrowTheKeyboard) {
    for (const Neighbours& neighbours : allNeighbours) {
        SCOPED_TRACE(neighbours.names);
        const auto manager = neighbours.windowManager ? desktop.startWindowManager() : nullptr;
        const auto compositor = neighbours.compositor ? desktop.startCompositor() : nullptr;
        ASSERT_NO_FATAL_FAILURE(start());
        paper.takeFocus();
        for (const bool covered : {false, true}) {
            if (covered) agent->cover();
            ASSERT_NO_FATAL_FAILURE(openAlert());
            paper.takeEvents();
            strike({aKey});
            EXPECT_FALSE(hears(paper, aKey));
            strike({escapeKey});
            expectClosed();
            EXPECT_TRUE(paperHasKeyboard());
            strike({aKey});
            EXPECT_TRUE(hears(paper, aKey));
            EXPECT_EQ(agent->isCovered(), covered);
        }
        agent.reset();
    }
}

TEST_F(Alerts, AppearInTheMiddleOfThePointersMonitor) {
    ASSERT_NO_FATAL_FAILURE(start());
    for (const size_t which : {0u, 1u}) {
        const Area monitor = which == 0 ? Desktop::left : Desktop::right;
        ASSERT_NO_FATAL_FAILURE(openAlert(which));
        const Area alert = panels().at(0).area;
        EXPECT_NEAR(2 * alert.x + alert.width, 2 * monitor.x + monitor.width, 2);
        EXPECT_GT(alert.y, monitor.y + monitor.height / 8);
        EXPECT_LT(alert.y, monitor.y + monitor.height / 2);
        strike({escapeKey});
        expectClosed();
    }
}

TEST_F(Alerts, LeaveTheKeyboardToThePointerIfItsOwnerHasGone) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(openAlert());
    paper.hide();
    strike({escapeKey});
    expectClosed();
    TestWindow other(desktop.display(), Desktop::left);
    other.show();
    desktop.input.move(960, 300);
    EXPECT_TRUE(await([&] {
        strike({aKey});
        return hears(other, aKey);
    }));
}

TEST_F(Alerts, DoWhatTheirButtonsSay) {
    const Browser browser(desktop);
    browser.install();
    ASSERT_NO_FATAL_FAILURE(start());
    const struct {
        const char* what;
        std::vector<uint8_t> keys;
        bool buys;
        bool showsAll;
    } answers[] = {
        {"Return on the first", {returnKey}, true, false},
        {"Escape", {escapeKey}, false, false},
        {"Tab to the second", {tabKey, returnKey}, false, false},
        {"Tab to the third", {tabKey, tabKey, returnKey}, false, true},
        {"arrows to the third", {leftKey, leftKey, leftKey, returnKey}, false, true},
        {"arrows there and back", {leftKey, rightKey, returnKey}, true, false},
    };
    std::string visited;
    for (const auto& answer : answers) {
        SCOPED_TRACE(answer.what);
        ASSERT_NO_FATAL_FAILURE(openAlert());
        const auto alert = panels().at(0).number;
        strike(answer.keys);
        EXPECT_TRUE(await([&] {
            const auto open = panels();
            return answer.showsAll ? open.size() == 1 && open[0].number != alert : open.empty();
        }));
        if (answer.buys) visited += shop;
        EXPECT_TRUE(await([&] { return browser.visited() == visited; })) << browser.visited();
        if (!answer.showsAll) continue;
        ASSERT_NO_FATAL_FAILURE(expectPanel());
        strike({escapeKey});
        expectClosed();
    }
    EXPECT_EQ(agent->process().errors(), "");
}

TEST_F(Alerts, LeaveEveryWayToToggleTheOrderAndAnEndInForce) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(openAlert());
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"key",
         [&] {
             strikeTogether({controlKey, altKey, superKey, nKey});
         }},
        {"button", [&] { click(agent->buttons().at(1).area); }},
        {"icon", [&] { agent->toggle(); }},
    };
    for (const auto& [way, toggle] : ways) {
        for (const bool covered : {true, false}) {
            toggle();
            EXPECT_TRUE(await([&] {
                return covered ? agent->isCovered() : agent->visibleCovers().empty();
            })) << way
                << covered;
            EXPECT_TRUE(await([&] { return isOnTop(); }));
        }
    }
    agent->process().send(SIGTERM); // Which gives the keyboard back too.
    EXPECT_EQ(agent->process().awaitEnd(), 0);
    EXPECT_TRUE(paperHasKeyboard());
}

TEST_F(Alerts, OutliveTheirMonitor) {
    ASSERT_NO_FATAL_FAILURE(start());
    agent->cover();
    ASSERT_NO_FATAL_FAILURE(openAlert(1));
    desktop.server->xrandr({"--delmonitor", "B"});
    EXPECT_TRUE(await([&] {
        const auto open = panels();
        return open.size() == 1 && open[0].area.x >= 0 &&
               open[0].area.right() <= Desktop::left.right();
    }));
    strike({escapeKey});
    expectClosed();
    EXPECT_TRUE(await([&] { return agent->isCovered(); }));
}

TEST_F(Alerts, TheEditionWindowHidesWhileAnotherProgramIsActive) {
    for (const Neighbours& neighbours : allNeighbours) {
        SCOPED_TRACE(neighbours.names);
        const auto manager = neighbours.windowManager ? desktop.startWindowManager() : nullptr;
        const auto compositor = neighbours.compositor ? desktop.startCompositor() : nullptr;
        ASSERT_NO_FATAL_FAILURE(start());
        ASSERT_NO_FATAL_FAILURE(openSummit());
        const ScreenWindow summit = panels().at(0);
        paper.takeFocus();
        expectClosed("as another program took the keyboard");
        EXPECT_EQ(desktop.screen.focus(), paper.number());
        ASSERT_NO_FATAL_FAILURE(openSummit());
        EXPECT_EQ(panels().at(0).number, summit.number);
        EXPECT_EQ(panels().at(0).area, summit.area);
        TestWindow newcomer(desktop.display(), {900, 700, 200, 100}, TestWindow::Kind::Managed);
        newcomer.show();
        if (!neighbours.windowManager) newcomer.takeFocus();
        expectClosed("as a new window took the keyboard");
        agent.reset();
    }
}

TEST_F(Alerts, AClickOnThemBringsTheKeyboardBack) {
    TestWindow other(desktop.display(), {700, 700, 100, 100});
    other.show();
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(openAlert());
    const ScreenWindow alert = panels().at(0);
    other.takeFocus();
    ASSERT_TRUE(await([&] { return desktop.screen.focus() == other.number(); }));
    click(alert.area);
    EXPECT_TRUE(await([&] { return desktop.screen.focus() == alert.number; }));
    strike({escapeKey});
    expectClosed();
    EXPECT_TRUE(await([&] { return desktop.screen.focus() == other.number(); }));
}

TEST_F(Alerts, TheEditionWindowReturnsWithTheProgram) {
    ASSERT_NO_FATAL_FAILURE(start());
    agent->choose(5); // The settings.
    ASSERT_TRUE(await([&] { return agent->windows().size() == 1; }));
    const xcb_window_t settings = agent->windows()[0].number;
    ASSERT_NO_FATAL_FAILURE(openSummit());
    paper.takeFocus();
    expectClosed();
    ASSERT_NO_FATAL_FAILURE(goToRow(0)); // A menu has the keyboard with another program active.
    EXPECT_TRUE(holdsFor(500ms, [&] { return panels().empty() && agent->menus().size() == 1; }));
    strike({escapeKey});
    xcb_set_input_focus(paper.client(), XCB_INPUT_FOCUS_PARENT, settings, XCB_CURRENT_TIME);
    paper.client().settle();
    EXPECT_TRUE(await([&] { return panels().size() == 1 && isOnTop(); }));
    EXPECT_EQ(desktop.screen.focus(), settings);
}

TEST_F(Alerts, TheEditionWindowOutlivesAPointerThatTakesTheKeyboardOnItsWayThere) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(openSummit());
    const ScreenWindow summit = panels().at(0);
    int step = 0;
    const auto stepAside = [&] { desktop.input.move(300 + ++step % 50, 300); };
    stepAside();
    paper.takeFocus();
    EXPECT_TRUE(holdsFor(1s, [&] {
        stepAside();
        return panels().size() == 1;
    }));
    desktop.input.move(summit.area.x + 200, summit.area.y + 200);
    EXPECT_TRUE(await([&] { return desktop.screen.focus() == summit.number; }));
    EXPECT_EQ(panels().size(), 1u);
}

TEST_F(Alerts, ComeAgainWhereTheyAreDestroyed) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(openAlert());
    const xcb_window_t first = panels().at(0).number;
    xcb_destroy_window(paper.client(), first);
    paper.client().settle();
    ASSERT_NO_FATAL_FAILURE(expectPanel());
    EXPECT_NE(panels().at(0).number, first);
    strike({escapeKey});
    expectClosed();
}

TEST_F(Alerts, TheEditionWindowIsOneAndStaysWhereItWasLeft) {
    ASSERT_NO_FATAL_FAILURE(start());
    agent->cover();
    ASSERT_NO_FATAL_FAILURE(openSummit());
    const ScreenWindow opened = panels().at(0);
    EXPECT_EQ(opened.area.width, 500);
    EXPECT_GT(opened.area.height, 600); // Its title bar comes on top.
    EXPECT_NEAR(2 * opened.area.x + opened.area.width, Desktop::left.width, 2);

    desktop.input.move(opened.area.x + 100, opened.area.y + 10);
    desktop.input.press(1);
    desktop.input.move(opened.area.x + 120, opened.area.y + 40);
    desktop.input.move(opened.area.x + 200, opened.area.y + 90);
    desktop.input.release(1);
    const Area moved = {opened.area.x + 100, opened.area.y + 80, opened.area.width,
                        opened.area.height};
    EXPECT_TRUE(await([&] { return panels().at(0).area == moved; })) << panels().at(0).area;

    ASSERT_NO_FATAL_FAILURE(openSummit()); // While it is open.
    EXPECT_EQ(panels().at(0).area, moved);
    for (const bool byMouse : {false, true}) {
        if (byMouse)
            click({moved.right() - 26, moved.y + 6, 20, 20});
        else
            strike({escapeKey});
        expectClosed(byMouse ? "by its button" : "by Escape");
        EXPECT_TRUE(paperHasKeyboard());
        ASSERT_NO_FATAL_FAILURE(openSummit());
        EXPECT_EQ(panels().at(0).number, opened.number);
        EXPECT_EQ(panels().at(0).area, moved);
    }
    EXPECT_TRUE(agent->isCovered());
}

TEST_F(Alerts, TheEditionWindowClosesBeforeItBuys) {
    const Browser browser(desktop);
    browser.install();
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(openSummit());
    strike({returnKey});
    expectClosed();
    EXPECT_TRUE(await([&] { return browser.visited() == shop; })) << browser.visited();
}
