// The alert about one feature and the edition window: both stand above a covered screen and take
// the keyboard themselves.
#include "Harness/Browser.h"
#include "Harness/OnDesktop.h"

#include <csignal>
#include <thread>

using namespace Harness;

namespace {

const std::string shop = "https://vardek.example/buy/nimbrel/\n";

struct Alerts : BesidePaper {
    std::vector<ScreenWindow> panels() const { return agent->panels(); }
    bool isOnTop() const {
        const auto open = panels();
        return !open.empty() && desktop.screen.windows().back().number == open.back().number;
    }

    void expectPanel() const {
        ASSERT_SOON(panels().size() == 1 && agent->menus().empty());
        EXPECT_SOON(desktop.screen.focus() == panels().at(0).number && isOnTop());
    }
    void openAlert(size_t button = 0) const {
        ASSERT_NO_FATAL_FAILURE(agent->openMenu(Row::features, button));
        strike({rightKey});
        ASSERT_SOON(agent->menus().size() == 2);
        strike({returnKey});
        expectPanel();
    }
    void openSummit() const {
        ASSERT_NO_FATAL_FAILURE(agent->choose(Row::summit));
        expectPanel();
    }
    void expectClosed(const char* when = "") const { EXPECT_SOON(panels().empty()) << when; }
    void close() const {
        strike({escapeKey});
        expectClosed();
    }
};

/// Beside no other program, or with the two that most desktops have.
struct AlertsBeside : Alerts, testing::WithParamInterface<bool> {
    std::unique_ptr<Process> manager = GetParam() ? desktop.startWindowManager() : nullptr;
    std::unique_ptr<Process> compositor = GetParam() ? desktop.startCompositor() : nullptr;
};

} // namespace

TEST_P(AlertsBeside, BorrowTheKeyboardAndLeaveEveryWayToToggleInForce) {
    ASSERT_NO_FATAL_FAILURE(start());
    paper.takeFocus();
    bool covered = false;
    size_t which = 0;
    const std::function<void()> ways[] = {
        [&] { desktop.input.strikeChord(); },
        [&] { click(agent->buttons().at(1).area); },
        [&] { agent->toggle(); },
    };
    for (const auto& toggle : ways) {
        ASSERT_NO_FATAL_FAILURE(openAlert(which % 2)); // In the upper middle of its monitor.
        const Area& monitor = which++ % 2 ? Desktop::right : Desktop::left;
        const Area alert = panels().at(0).area;
        EXPECT_NEAR(alert.middle().x, monitor.middle().x, 1);
        EXPECT_GT(alert.y, monitor.y + monitor.height / 8);
        EXPECT_LT(alert.y, monitor.y + monitor.height / 2);
        // A press on one of its buttons is no drag.
        desktop.input.drag({alert.right() - 80, alert.bottom() - 33, 1, 1},
                           {{alert.x, alert.y}, {alert.x + 50, alert.y + 50}});
        EXPECT_FOR(200ms, panels().at(0).area == alert);
        toggle();
        expectCovered(covered = !covered);
        EXPECT_SOON(isOnTop());
        paper.takeEvents();
        strike({aKey});
        EXPECT_FALSE(paper.hears(XCB_KEY_PRESS, aKey));
        close();
        EXPECT_TRUE(paperHasKeyboard());
        strike({aKey});
        EXPECT_TRUE(paper.hears(XCB_KEY_PRESS, aKey));
        EXPECT_EQ(agent->isCovered(), covered);
    }
    ASSERT_NO_FATAL_FAILURE(openAlert(1));
    desktop.server->xrandr({"--delmonitor", "B"});
    EXPECT_SOON(panels().size() == 1 && Desktop::left.contains(panels()[0].area));
    agent->process().send(SIGTERM); // Which gives the keyboard back too.
    EXPECT_EQ(agent->process().awaitEnd(), 0);
    EXPECT_TRUE(paperHasKeyboard());
}

TEST_P(AlertsBeside, TheEditionWindowIsOneAndHidesWhileAnotherProgramIsActive) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(openSummit());
    const auto number = panels().at(0).number;
    const auto area = [&] { return panels().at(0).area.grown(GetParam() ? -12 : 0); }; // No shadow.
    const auto [x, y, width, height] = area();
    EXPECT_EQ(width, 500);
    EXPECT_GT(height, 600); // Its title bar comes on top.
    desktop.input.drag({x + 100, y + 10, 1, 1}, {{x + 120, y + 40}, {x + 200, y + 90}});
    const Area moved = {x + 100, y + 80, width, height};
    EXPECT_SOON(area() == moved) << area();
    ASSERT_NO_FATAL_FAILURE(openSummit()); // While it is open.
    const auto expectReturn = [&](const char* when) {
        expectClosed(when);
        ASSERT_NO_FATAL_FAILURE(openSummit());
        EXPECT_EQ(panels().at(0).number, number);
        EXPECT_EQ(area(), moved);
    };
    paper.takeFocus();
    expectReturn("as another program took the keyboard");
    TestWindow newcomer(desktop.display(), {900, 700, 200, 100}, TestWindow::Kind::Managed);
    newcomer.show();
    if (!GetParam()) newcomer.takeFocus();
    expectReturn("as a new window took the keyboard");
    click({moved.right() - 26, moved.y + 6, 20, 20});
    expectReturn("by its button");
}

INSTANTIATE_TEST_SUITE_P(All, AlertsBeside, testing::Bool(),
                         [](const auto& each) { return each.param ? "Others" : "Nobody"; });

TEST_F(Alerts, DoWhatTheirButtonsSay) {
    const Browser browser(desktop);
    browser.install();
    ASSERT_NO_FATAL_FAILURE(start());
    std::string visited;
    for (const auto& [keys, buys] : {std::pair{std::vector{returnKey}, true},
                                     {{escapeKey}, false},
                                     {{tabKey, returnKey}, false},
                                     {{leftKey, rightKey, returnKey}, true}}) {
        SCOPED_TRACE(testing::PrintToString(keys));
        ASSERT_NO_FATAL_FAILURE(openAlert());
        strike(keys);
        expectClosed();
        if (buys) visited += shop;
        EXPECT_SOON(browser.visited() == visited) << browser.visited();
    }
    ASSERT_NO_FATAL_FAILURE(openAlert());
    const auto alert = panels().at(0).number;
    strike({leftKey, leftKey, leftKey, returnKey}); // All that there is.
    EXPECT_SOON(!panels().empty() && panels()[0].number != alert);
    ASSERT_NO_FATAL_FAILURE(expectPanel());
    close();
    ASSERT_NO_FATAL_FAILURE(openSummit());
    strike({returnKey});
    expectClosed("before it buys");
    EXPECT_SOON(browser.visited() == visited + shop) << browser.visited();
    EXPECT_EQ(agent->process().errors(), "");
}

TEST_F(Alerts, ComeAgainWhereTheyAreDestroyedAndTakeTheKeyboardAtAClick) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(openAlert());
    const ScreenWindow first = panels().at(0);
    xcb_destroy_window(paper.client(), first.number);
    paper.client().settle();
    ASSERT_NO_FATAL_FAILURE(expectPanel());
    EXPECT_NE(panels().at(0).number, first.number);
    TestWindow other(desktop.display(), {700, 700, 100, 100});
    other.show();
    other.takeFocus();
    ASSERT_SOON(desktop.screen.focus() == other.number());
    click(first.area);
    EXPECT_SOON(desktop.screen.focus() == panels().at(0).number);
    close();
    EXPECT_SOON(desktop.screen.focus() == other.number());
}

TEST_F(Alerts, TheEditionWindowReturnsWithTheProgram) {
    ASSERT_NO_FATAL_FAILURE(start());
    agent->choose(Row::settings);
    ASSERT_SOON(agent->windows().size() == 1);
    const xcb_window_t settings = agent->windows()[0].number;
    ASSERT_NO_FATAL_FAILURE(openSummit());
    paper.takeFocus();
    expectClosed();
    agent->openMenu(); // It has the keyboard with another program active.
    EXPECT_FOR(500ms, panels().empty() && agent->menus().size() == 1);
    strike({escapeKey});
    xcb_set_input_focus(paper.client(), XCB_INPUT_FOCUS_PARENT, settings, XCB_CURRENT_TIME);
    paper.client().settle();
    EXPECT_SOON(panels().size() == 1 && isOnTop());
    EXPECT_EQ(desktop.screen.focus(), settings);
}

TEST_F(Alerts, TheEditionWindowOutlivesAPointerThatTakesTheKeyboardOnItsWayThere) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_NO_FATAL_FAILURE(openSummit());
    const ScreenWindow summit = panels().at(0);
    desktop.input.move(300, 300);
    std::jthread hand([&](const std::stop_token& ends) {
        const Input input(desktop.display());
        for (int step = 0; !ends.stop_requested(); ++step) // Nowhere twice.
            input.move(300 + step % 397, 300 + step / 397 % 397);
    });
    paper.takeFocus();
    EXPECT_FOR(1s, panels().size() == 1);
    hand.request_stop();
    hand.join();
    desktop.input.move(summit.area.x + 200, summit.area.y + 200);
    EXPECT_SOON(desktop.screen.focus() == summit.number);
    EXPECT_EQ(panels().size(), 1u);
}
