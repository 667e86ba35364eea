#include "Harness/Keys.h"
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/SettingsManager.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <thread>

using namespace Harness;

namespace {

struct Point {
    int x = 0;
    int y = 0;
};

Point middleOf(const Area& area) { return {area.x + area.width / 2, area.y + area.height / 2}; }

struct Buttons : OnDesktop {
    Buttons() {
        paper.takeFocus();
        leave();
    }

    void start() {
        ASSERT_NO_FATAL_FAILURE(OnDesktop::start());
        ASSERT_TRUE(await([&] { return isAwake(0) && isAwake(1); }));
    }

    bool areThere(size_t count = 2) const { return agent->buttons().size() == count; }
    /// Changes the monitors and waits until so many buttons have been made anew for them.
    bool areMadeAnew(const std::vector<std::string>& change, size_t count) const {
        const auto before = agent->buttons();
        desktop.server->xrandr(change);
        return await([&] {
            const auto now = agent->buttons();
            return now.size() == count && std::ranges::none_of(now, [&](const auto& button) {
                       return std::ranges::find(before, button.number, &ScreenWindow::number) !=
                              before.end();
                   });
        });
    }
    /// Empty for a moment in which the buttons are made anew.
    Area area(size_t which) const {
        const auto buttons = agent->buttons();
        return which < buttons.size() ? buttons[which].area : Area();
    }
    Point middle(size_t which) const { return middleOf(area(which)); }

    void hover(size_t which) const {
        const Point point = middle(which);
        desktop.input.move(point.x, point.y);
    }
    void leave() const { desktop.input.move(960, 300); }
    void click(size_t which) const {
        hover(which);
        desktop.input.click(1);
    }
    /// A press, the moves and a release.
    void drag(size_t which, const std::vector<Point>& moves) const {
        hover(which);
        desktop.input.press(1);
        for (const Point& point : moves)
            desktop.input.move(point.x, point.y);
        desktop.input.release(1);
    }

    /// Above the eye, within the disc.
    int shade(size_t which) const {
        const Point point = middle(which);
        const int y = point.y - 17;
        return desktop.screen.grab({point.x, y, 1, 1}).luminance(point.x, y);
    }
    bool isDim(size_t which) const { return shade(which) > 60; }
    bool isAwake(size_t which) const { return shade(which) < 50; }

    std::vector<ScreenWindow> popups(const std::string& instance) const {
        auto windows = desktop.screen.windows();
        std::erase_if(windows, [&](const auto& window) {
            return !window.viewable || window.instance != instance;
        });
        return windows;
    }

    void openMenuAndClose(size_t which, bool byControlClick) {
        hover(which);
        if (byControlClick) desktop.input.hold(controlKey);
        desktop.input.click(byControlClick ? 1 : 3);
        if (byControlClick) desktop.input.letGo(controlKey);
        EXPECT_TRUE(await([&] { return desktop.screen.windows().back().instance == "menu"; }));
        desktop.input.strike(escapeKey);
        EXPECT_TRUE(await([&] { return agent->menus().empty(); }));
    }

    void expectToggles(size_t which, const char* when) {
        click(which);
        EXPECT_TRUE(await([&] { return agent->isCovered(); })) << when;
        click(which);
        EXPECT_TRUE(await([&] { return agent->visibleCovers().empty(); })) << when;
    }

    Paper paper{desktop, 0x4682B4};
};

} // namespace

TEST_F(Buttons, StandOnTheRightOfEveryMonitorAndToggleAwakeOrDim) {
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_EQ(agent->buttons()[0].instance, "button:A");
    EXPECT_EQ(agent->buttons()[1].instance, "button:B");
    // Down by 62 % of the travel that 6 pixels at the top and the bottom leave.
    EXPECT_EQ(area(0), (Area{1920 - 50, 6 + 635, 44, 44}));
    EXPECT_EQ(area(1), (Area{3200 - 50, 6 + 600, 44, 44}));

    const auto focus = desktop.screen.focus();
    paper.takeEvents();
    expectToggles(0, "on the left");
    expectToggles(1, "on the right");
    leave();
    ASSERT_TRUE(await([&] { return isDim(0) && isDim(1); }));
    expectToggles(1, "dim");
    drag(1, {{2500, 300}, {2000, 300}});
    EXPECT_EQ(desktop.screen.focus(), focus);
    for (const auto& event : paper.takeEvents())
        EXPECT_NE(event.type, XCB_FOCUS_OUT);
}

TEST_F(Buttons, AreRoundToTheMouse) {
    for (const bool composited : {false, true}) {
        const auto compositor = composited ? desktop.startCompositor() : nullptr;
        ASSERT_NO_FATAL_FAILURE(start());
        const Point centre = middle(0);
        for (const auto& [dx, dy] : {std::pair{-20, -20}, {19, -20}, {-20, 19}, {19, 19}}) {
            paper.takeEvents();
            desktop.input.move(centre.x + dx, centre.y + dy);
            desktop.input.click(1);
            const auto events = paper.takeEvents();
            EXPECT_TRUE(std::ranges::any_of(
                events, [](const auto& event) { return event.type == XCB_BUTTON_PRESS; }))
                << dx << "," << dy;
        }
        EXPECT_TRUE(agent->visibleCovers().empty());
        agent.reset();
    }
}

TEST_F(Buttons, MoveAtMoreThanThreePoints) {
    struct Case {
        const char* scale;
        int pixels; ///< Of the pointer's way.
        bool drags;
    };
    for (const auto& each : {
             Case{"1", 3, false}, Case{"1", 4, true}, Case{"1.25", 3, false},
             Case{"1.25", 4, true},                   // 3.2 points
             Case{"2", 6, false}, Case{"2", 7, true}, // 3.5 points
         }) {
        desktop.extra = {{"QT_SCALE_FACTOR", each.scale}};
        ASSERT_NO_FATAL_FAILURE(start());
        const Area before = area(1);
        const Point from = middleOf(before);
        drag(1, {{from.x - each.pixels, from.y}, from});
        EXPECT_TRUE(await([&] { return agent->isCovered() != each.drags; }))
            << each.scale << " " << each.pixels;
        EXPECT_TRUE(await([&] { return area(1) == before; })) << each.scale << " " << each.pixels;
        if (agent->isCovered()) agent->uncover();
        agent.reset();
    }
}

TEST_F(Buttons, FollowTheDragAndSettleAtASide) {
    ASSERT_NO_FATAL_FAILURE(start());
    hover(0);
    desktop.input.press(1);
    desktop.input.move(500, 400);
    EXPECT_TRUE(await([&] { return area(0) == Area{478, 378, 44, 44}; })) << area(0);
    desktop.input.release(1);
    const Area settled = {6, 378, 44, 44};
    EXPECT_TRUE(await([&] { return area(0) == settled; })) << area(0);
    EXPECT_TRUE(agent->visibleCovers().empty());

    agent.reset();
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_EQ(area(0), settled) << "after a restart";
}

TEST_F(Buttons, ComeHomeFromTheOtherMonitor) {
    ASSERT_NO_FATAL_FAILURE(start());
    drag(1, {{2000, 700}, {400, 300}});
    EXPECT_TRUE(await([&] { return area(0) == Area{1926 - 56, 641, 44, 44}; }));
    EXPECT_TRUE(await([&] { return area(1) == Area{1926, 278, 44, 44}; })) << area(1);
    drag(0, {{2500, 1070}});
    EXPECT_TRUE(await([&] { return area(0) == Area{1870, 1030, 44, 44}; })) << area(0);
}

TEST_F(Buttons, OpenAMenuAndDoNotToggle) {
    ASSERT_NO_FATAL_FAILURE(start());
    for (const bool covered : {false, true}) {
        if (covered) agent->cover();
        for (const bool control : {false, true}) {
            openMenuAndClose(1, control);
            EXPECT_EQ(agent->isCovered(), covered);
        }
    }
    click(1);
    EXPECT_TRUE(await([&] { return agent->visibleCovers().empty(); }));
}

TEST_F(Buttons, OutliveAChangeOfMonitorsUnderAnOpenMenu) {
    ASSERT_NO_FATAL_FAILURE(start());
    hover(1);
    desktop.input.click(3);
    ASSERT_TRUE(await([&] { return agent->menus().size() == 1; }));
    desktop.server->xrandr({"--delmonitor", "B"});
    EXPECT_TRUE(await([&] { return areThere(1); }));
    desktop.input.strike(escapeKey);
    EXPECT_TRUE(await([&] { return agent->menus().empty(); }));
    expectToggles(0, "after the menu");
}

TEST_F(Buttons, LiftUnderThePointerAndFadeWithoutIt) {
    ASSERT_NO_FATAL_FAILURE(start());
    ASSERT_TRUE(await([&] { return isDim(0) && isDim(1); }));
    hover(0);
    EXPECT_TRUE(await([&] { return isAwake(0); }));
    EXPECT_TRUE(holdsFor(3s, [&] { return isAwake(0); }));
    EXPECT_TRUE(isDim(1));
    leave();
    EXPECT_TRUE(holdsFor(2s, [&] { return isAwake(0); }));
    EXPECT_TRUE(await([&] { return isDim(0); }));
}

TEST_F(Buttons, TellWhatTheyDo) {
    ASSERT_NO_FATAL_FAILURE(start());
    agent->cover();
    hover(0);
    desktop.input.move(middle(0).x + 1, middle(0).y);
    ASSERT_TRUE(await([&] { return popups("tip").size() == 1; }));
    EXPECT_EQ(desktop.screen.windows().back().instance, "tip");
}

TEST_F(Buttons, StandAboveTheCoverAndAllThatOthersRaise) {
    for (const bool covered : {false, true}) {
        ASSERT_NO_FATAL_FAILURE(start());
        if (covered) agent->cover();
        const Area spot = area(0);
        TestWindow popup(desktop.display(), {spot.x - 50, spot.y - 50, 200, 200});
        for (int i = 0; i < 5; ++i) {
            popup.show();
            popup.raise();
            EXPECT_TRUE(await([&] {
                const auto windows = desktop.screen.windows();
                return windows.back().instance.starts_with("button:") &&
                       (windows.end() - 2)->instance.starts_with("button:");
            }));
            EXPECT_TRUE(await([&] {
                return desktop.screen.grab({middle(0).x, middle(0).y, 1, 1}).count(marker) == 0;
            }));
            popup.hide();
        }
        click(0);
        EXPECT_TRUE(await([&] { return agent->isCovered() != covered; }));
        agent.reset();
    }
}

TEST_F(Buttons, SurviveTheEndOfTheirMonitorInTheMiddleOfADrag) {
    ASSERT_NO_FATAL_FAILURE(start());
    for (int round = 0; round < 3; ++round) {
        hover(1);
        desktop.input.press(1);
        desktop.input.move(2500, 500);
        desktop.server->xrandr({"--delmonitor", "B"});
        desktop.input.move(1500, 500);
        EXPECT_TRUE(await([&] { return areThere(1); }));
        desktop.input.move(1400, 400);
        desktop.input.release(1);
        desktop.server->xrandr({"--setmonitor", "B", "1280/340x1024/270+1920+0", "none"});
        ASSERT_TRUE(await([&] { return areThere(); }));
    }
    EXPECT_EQ(area(1), (Area{3150, 606, 44, 44}));
    expectToggles(1, "at last");
}

TEST_F(Buttons, LeaveNothingBehindOnAMonitorThatGoes) {
    SettingsManager manager(desktop.display());
    manager.tell({{"Gtk/CursorThemeName", "one"}});
    ASSERT_NO_FATAL_FAILURE(start());
    for (const char* theme : {"two", "three", "four"}) {
        openMenuAndClose(1, false);
        EXPECT_TRUE(areMadeAnew({"--delmonitor", "B"}, 1));
        manager.tell({{"Gtk/CursorThemeName", theme}});
        expectToggles(0, theme);
        ASSERT_TRUE(areMadeAnew({"--setmonitor", "B", "1280/340x1024/270+1920+0", "none"}, 2));
    }
}

TEST(ButtonsOnOutputs, SurviveTheirEndInTheMiddleOfADrag) {
    auto server = XServer::outputs();
    if (!server) GTEST_SKIP() << "no X server with several outputs can start here";
    Desktop desktop(std::move(server));
    desktop.server->xrandr({"--addmode", "DUMMY1", "1024x768"});
    const std::vector<std::string> on = {"--output", "DUMMY1",     "--mode",
                                         "1024x768", "--right-of", "DUMMY0"};
    desktop.server->xrandr(on);
    Agent agent(desktop);
    for (int round = 0; round < 5; ++round) {
        ASSERT_TRUE(await([&] { return agent.buttons().size() == 2; }));
        const Point from = middleOf(agent.buttons()[1].area);
        desktop.input.move(from.x, from.y);
        desktop.input.press(1);
        desktop.input.move(from.x - 300, from.y - 200);
        desktop.server->xrandr({"--output", "DUMMY1", "--off"});
        EXPECT_TRUE(await([&] { return agent.buttons().size() == 1; })) << round;
        desktop.input.move(300, 300);
        desktop.input.release(1);
        desktop.server->xrandr(on);
    }
    EXPECT_FALSE(agent.process().status());
}

TEST_F(Buttons, KeepClearOfPanels) {
    const XClient client(desktop.display());
    const auto tell = [&](xcb_window_t window, const char* property,
                          const std::vector<uint32_t>& numbers,
                          xcb_atom_t type = XCB_ATOM_CARDINAL) {
        xcb_change_property(client, XCB_PROP_MODE_REPLACE, window, client.atom(property), type, 32,
                            static_cast<uint32_t>(numbers.size()), numbers.data());
        client.settle();
    };
    const auto setStrut = [&](const TestWindow& panel, const std::vector<uint32_t>& strut) {
        tell(panel.number(), "_NET_WM_STRUT_PARTIAL", strut);
    };
    ASSERT_NO_FATAL_FAILURE(start());
    const Area left = area(0);
    const Area right = area(1);
    {
        // Along the right edge of the screen, and below on the right monitor alone.
        TestWindow panel(desktop.display(), {3140, 0, 60, 1024}, TestWindow::Kind::Managed);
        setStrut(panel, {0, 60, 0, 0, 0, 0, 0, 1023, 0, 0, 0, 0});
        panel.show();
        EXPECT_TRUE(await([&] { return area(1).x == right.x - 60; })) << area(1);
        EXPECT_EQ(area(1).y, right.y);
        setStrut(panel, {0, 60, 0, 156, 0, 0, 0, 1023, 0, 0, 1920, 3199});
        EXPECT_TRUE(await([&] { return area(1).y == right.y - 62; })) << area(1);
        EXPECT_EQ(area(0), left);
    }
    EXPECT_TRUE(await([&] { return area(1) == right; })) << area(1);

    // Window managers may list no panels, and put them into frames of their own.
    tell(client.root(), "_NET_CLIENT_LIST", {}, XCB_ATOM_WINDOW);
    for (const bool framed : {false, true}) {
        const TestWindow frame(desktop.display(), {3140, 0, 60, 1024});
        const TestWindow panel(desktop.display(), {3140, 0, 60, 1024});
        constexpr uint32_t wholeEdge = 0; // Where the strip starts, and where it ends.
        setStrut(panel, {0, 60, 0, 0, 0, 0, wholeEdge, wholeEdge, 0, 0, 0, 0});
        if (framed) xcb_reparent_window(client, panel.number(), frame.number(), 0, 0);
        xcb_map_window(client, panel.number());
        if (framed) xcb_map_window(client, frame.number());
        client.settle();
        EXPECT_TRUE(await([&] { return area(1).x == right.x - 60; })) << framed << area(1);
        xcb_unmap_window(client, panel.number());
        client.settle();
        EXPECT_TRUE(await([&] { return area(1) == right; })) << framed << area(1);
    }

    // A shell tells what its own panels leave of each monitor.
    tell(client.root(), "_GTK_WORKAREAS_D0", {0, 0, 1920, 1080, 1920, 0, 1200, 1024});
    EXPECT_TRUE(await([&] { return area(1).x == right.x - 80; })) << area(1);
    EXPECT_EQ(area(0), left);
}

TEST_F(Buttons, TakeTheFormThatTheCompositorAllows) {
    ASSERT_NO_FATAL_FAILURE(start());
    const Area plain = area(0);
    const Area withShadow = {plain.x - 12, plain.y - 12, plain.width + 24, plain.height + 24};
    for (const int end : {SIGTERM, SIGKILL}) {
        openMenuAndClose(0, end == SIGKILL);
        const auto compositor = desktop.startCompositor();
        EXPECT_TRUE(await([&] { return areThere() && area(0) == withShadow; }));
        expectToggles(0, "with a compositor");
        openMenuAndClose(0, end == SIGTERM);
        compositor->send(end);
        EXPECT_TRUE(compositor->awaitEnd());
        EXPECT_TRUE(await([&] { return areThere() && area(0) == plain; }));
        expectToggles(0, "without one");
    }
}

TEST_F(Buttons, FinishADragThatACompositorCutsInto) {
    ASSERT_NO_FATAL_FAILURE(start());
    hover(0);
    desktop.input.press(1);
    desktop.input.move(600, 400);
    const auto compositor = desktop.startCompositor();
    desktop.input.move(500, 400);
    desktop.input.release(1);
    const Area settled = {6 - 12, 378 - 12, 68, 68};
    EXPECT_TRUE(await([&] { return areThere() && area(0) == settled; })) << area(0);
}

TEST_F(Buttons, SleepWhileNothingHappens) {
    for (const bool composited : {false, true}) {
        const auto compositor = composited ? desktop.startCompositor() : nullptr;
        ASSERT_NO_FATAL_FAILURE(start());
        ASSERT_TRUE(await([&] { return isDim(0) && isDim(1); }));
        std::this_thread::sleep_for(500ms); // for the last of the fade
        const long before = agent->process().sleeps();
        std::this_thread::sleep_for(3s);
        EXPECT_LE(agent->process().sleeps() - before, 3);
        agent.reset();
    }
}
