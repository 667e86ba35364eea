#include "Harness/Keys.h"
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/SettingsManager.h"

#include <algorithm>
#include <csignal>
#include <thread>

using namespace Harness;

namespace {

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
    bool comesTo(size_t which, const Area& place) const {
        return await([&] { return areThere() && area(which) == place; });
    }

    void hover(size_t which) const { desktop.input.move(area(which).middle()); }
    void leave() const { desktop.input.move(960, 300); }
    void click(size_t which) const { desktop.input.click(area(which)); }
    void drag(size_t which, const std::vector<Point>& moves) const {
        desktop.input.drag(area(which), moves);
    }

    /// Above the eye, within the disc.
    int shade(size_t which) const {
        const auto [x, y] = area(which).middle();
        return desktop.screen.grab({x, y - 17, 1, 1}).luminance(x, y - 17);
    }
    bool isDim(size_t which) const { return shade(which) > 60; }
    bool isAwake(size_t which) const { return shade(which) < 50; }

    void openMenuAndClose(size_t which, bool byControlClick) const {
        if (byControlClick) desktop.input.hold(controlKey);
        desktop.input.click(area(which), byControlClick ? 1 : 3);
        if (byControlClick) desktop.input.letGo(controlKey);
        EXPECT_TRUE(await([&] { return desktop.screen.windows().back().instance == "menu"; }));
        desktop.input.strike(escapeKey);
        EXPECT_TRUE(await([&] { return agent->menus().empty(); }));
    }

    void expectToggles(size_t which, const char* when) const {
        click(which);
        EXPECT_TRUE(await([&] { return agent->isCovered(); })) << when;
        click(which);
        EXPECT_TRUE(await([&] { return agent->visibleCovers().empty(); })) << when;
    }

    Paper paper{desktop, 0x4682B4};
};

const std::vector<std::string> plug = {"--setmonitor", "B", "1280/340x1024/270+1920+0", "none"};

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
    leave();
    ASSERT_TRUE(await([&] { return isDim(0) && isDim(1); }));
    expectToggles(1, "dim");
    drag(1, {{2500, 300}, {2000, 300}});
    EXPECT_EQ(desktop.screen.focus(), focus);
    for (const auto& event : paper.takeEvents())
        EXPECT_NE(event.type, XCB_FOCUS_OUT);

    hover(0);
    EXPECT_TRUE(await([&] { return isAwake(0); }));
    EXPECT_TRUE(holdsFor(3s, [&] { return isAwake(0); }));
    EXPECT_TRUE(isDim(1));
    leave();
    EXPECT_TRUE(holdsFor(2s, [&] { return isAwake(0); }));
    EXPECT_TRUE(await([&] { return isDim(0); }));

    agent->cover();
    hover(0);
    desktop.input.move(area(0).middle().x + 1, area(0).middle().y);
    EXPECT_TRUE(await([&] { return desktop.screen.windows().back().instance == "tip"; }));
}

TEST_F(Buttons, AreRoundToTheMouse) {
    for (const bool composited : {false, true}) {
        const auto compositor = composited ? desktop.startCompositor() : nullptr;
        ASSERT_NO_FATAL_FAILURE(start());
        const auto [x, y] = area(0).middle();
        for (const auto& [dx, dy] : {std::pair{-20, -20}, {19, -20}, {-20, 19}, {19, 19}}) {
            paper.takeEvents();
            desktop.input.click({x + dx, y + dy, 1, 1});
            EXPECT_TRUE(paper.hears(XCB_BUTTON_PRESS, 1)) << dx << "," << dy;
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
    for (const auto& [scale, pixels, drags] : {
             Case{"1", 3, false}, Case{"1", 4, true}, Case{"1.25", 3, false},
             Case{"1.25", 4, true},                   // 3.2 points
             Case{"2", 6, false}, Case{"2", 7, true}, // 3.5 points
         }) {
        SCOPED_TRACE(testing::Message() << scale << " " << pixels);
        desktop.extra = {{"QT_SCALE_FACTOR", scale}};
        ASSERT_NO_FATAL_FAILURE(start());
        const Area before = area(1);
        const Point from = before.middle();
        drag(1, {{from.x - pixels, from.y}, from});
        EXPECT_TRUE(await([&] { return agent->isCovered() != drags; }));
        EXPECT_TRUE(comesTo(1, before));
        agent.reset();
    }
}

TEST_F(Buttons, FollowTheDragAndSettleAtASideOfTheirMonitor) {
    ASSERT_NO_FATAL_FAILURE(start());
    hover(0);
    desktop.input.press(1);
    desktop.input.move(500, 400);
    EXPECT_TRUE(comesTo(0, {478, 378, 44, 44})) << area(0);
    const auto compositor = desktop.startCompositor();
    desktop.input.move(510, 400);
    desktop.input.release(1);
    EXPECT_TRUE(comesTo(0, Area{6, 378, 44, 44}.grown(12))) << area(0) << " with its shadow";
    compositor->send(SIGTERM);
    EXPECT_TRUE(comesTo(0, {6, 378, 44, 44})) << area(0);
    drag(1, {{2000, 700}, {400, 300}});
    EXPECT_TRUE(comesTo(1, {1926, 278, 44, 44})) << area(1);
    drag(0, {{2500, 1070}});
    EXPECT_TRUE(comesTo(0, {1870, 1030, 44, 44})) << area(0);
    EXPECT_TRUE(agent->visibleCovers().empty());
    agent.reset();
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_EQ(area(0), (Area{1870, 1030, 44, 44})) << "after a restart";
    EXPECT_EQ(area(1), (Area{1926, 278, 44, 44})) << "after a restart";
}

TEST_F(Buttons, OpenAMenuAndOutliveTheirMonitorUnderIt) {
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
    ASSERT_NO_FATAL_FAILURE(agent->openMenu(0, 1));
    desktop.server->xrandr({"--delmonitor", "B"});
    EXPECT_TRUE(await([&] { return areThere(1); }));
    desktop.input.strike(escapeKey);
    EXPECT_TRUE(await([&] { return agent->menus().empty(); }));
    expectToggles(0, "after the menu");
}

TEST_F(Buttons, StandAboveTheCoverAndAllThatOthersRaise) {
    ASSERT_NO_FATAL_FAILURE(start());
    const auto [x, y] = area(0).middle();
    for (const bool covered : {false, true}) {
        if (covered) agent->cover();
        TestWindow popup(desktop.display(), {x - 70, y - 70, 200, 200});
        for (int i = 0; i < 5; ++i) {
            popup.show();
            popup.raise();
            EXPECT_TRUE(await([&] {
                const auto windows = desktop.screen.windows();
                return windows.back().instance.starts_with("button:") &&
                       (windows.end() - 2)->instance.starts_with("button:") &&
                       !desktop.screen.grab({x, y, 1, 1}).isAll(marker);
            }));
            popup.hide();
        }
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
        desktop.server->xrandr(plug);
        ASSERT_TRUE(await([&] { return areThere(); }));
    }
    EXPECT_TRUE(comesTo(1, {3150, 606, 44, 44}));
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
        ASSERT_TRUE(areMadeAnew(plug, 2));
    }
}

TEST(ButtonsOnOutputs, SurviveTheirEndInTheMiddleOfADrag) {
    auto server = XServer::outputs();
    if (!server) GTEST_SKIP() << "no X server with several outputs can start here";
    Desktop desktop(std::move(server));
    desktop.server->xrandr({"--addmode", "DUMMY1", "1024x768"});
    Agent agent(desktop);
    for (int round = 0; round < 5; ++round) {
        desktop.server->xrandr(
            {"--output", "DUMMY1", "--mode", "1024x768", "--right-of", "DUMMY0"});
        ASSERT_TRUE(await([&] { return agent.buttons().size() == 2; }));
        desktop.input.move(agent.buttons()[1].area.middle());
        desktop.input.press(1);
        desktop.input.move(1500, 200);
        desktop.server->xrandr({"--output", "DUMMY1", "--off"});
        EXPECT_TRUE(await([&] { return agent.buttons().size() == 1; })) << round;
        desktop.input.move(300, 300);
        desktop.input.release(1);
    }
    EXPECT_FALSE(agent.process().status());
}

TEST_F(Buttons, KeepClearOfPanels) {
    const XClient client(desktop.display());
    const auto setStrut = [&](const TestWindow& panel, const std::vector<uint32_t>& strut) {
        client.put(panel.number(), "_NET_WM_STRUT_PARTIAL", XCB_ATOM_CARDINAL, strut);
    };
    ASSERT_NO_FATAL_FAILURE(start());
    const Area left = area(0);
    const Area right = area(1);
    const Area panelArea = {3140, 0, 60, 1024};
    const auto standsBeside = [&](int width, int height) {
        return comesTo(1, {right.x - width, right.y - height, 44, 44}) && area(0) == left;
    };
    {
        // Along the right edge of the screen, and below on the right monitor alone.
        TestWindow panel(desktop.display(), panelArea, TestWindow::Kind::Managed);
        setStrut(panel, {0, 60, 0, 0, 0, 0, 0, 1023, 0, 0, 0, 0});
        panel.show();
        EXPECT_TRUE(standsBeside(60, 0)) << area(1);
        setStrut(panel, {0, 60, 0, 156, 0, 0, 0, 1023, 0, 0, 1920, 3199});
        EXPECT_TRUE(standsBeside(60, 62)) << area(1);
    }
    EXPECT_TRUE(standsBeside(0, 0)) << area(1);

    // Window managers may list no panels, and put them into frames of their own.
    client.put(client.root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, {});
    for (const bool framed : {false, true}) {
        TestWindow frame(desktop.display(), panelArea);
        TestWindow panel(desktop.display(), panelArea);
        constexpr uint32_t wholeEdge = 0; // Where the strip starts, and where it ends.
        setStrut(panel, {0, 60, 0, 0, 0, 0, wholeEdge, wholeEdge, 0, 0, 0, 0});
        if (framed) xcb_reparent_window(client, panel.number(), frame.number(), 0, 0);
        client.settle();
        panel.show();
        if (framed) frame.show();
        EXPECT_TRUE(standsBeside(60, 0)) << framed << area(1);
        panel.hide();
        EXPECT_TRUE(standsBeside(0, 0)) << framed << area(1);
    }

    // A shell tells what its own panels leave of each monitor.
    client.put(client.root(), "_GTK_WORKAREAS_D0", XCB_ATOM_CARDINAL,
               {0, 0, 1920, 1080, 1920, 0, 1200, 1024});
    EXPECT_TRUE(standsBeside(80, 0)) << area(1);
}

TEST_F(Buttons, TakeTheFormThatTheCompositorAllows) {
    ASSERT_NO_FATAL_FAILURE(start());
    const Area plain = area(0);
    for (const int end : {SIGTERM, SIGKILL}) {
        openMenuAndClose(0, end == SIGKILL);
        const auto compositor = desktop.startCompositor();
        EXPECT_TRUE(comesTo(0, plain.grown(12)));
        expectToggles(0, "with a compositor");
        openMenuAndClose(0, end == SIGTERM);
        compositor->send(end);
        EXPECT_TRUE(compositor->awaitEnd());
        EXPECT_TRUE(comesTo(0, plain));
        expectToggles(0, "without one");
    }
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
