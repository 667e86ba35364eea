#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/SettingsManager.h"

#include <csignal>

using namespace Harness;

namespace {

struct Buttons : OnDesktop {
    Buttons() {
        paper.takeFocus();
        leave();
    }

    void start() {
        ASSERT_NO_FATAL_FAILURE(OnDesktop::start());
        ASSERT_SOON(isAwake(0) && isAwake(1));
    }

    /// Empty for a moment in which the buttons are made anew.
    Area area(size_t which) const {
        const auto buttons = agent->buttons();
        return which < buttons.size() ? buttons[which].area : Area();
    }
    void expectAt(size_t which, const Area& place) const {
        EXPECT_SOON(agent->buttons().size() == 2 && area(which) == place) << area(which);
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

    void closeMenu() const {
        EXPECT_SOON(desktop.screen.windows().back().instance == "menu");
        strike({escapeKey});
        EXPECT_SOON(agent->menus().empty());
    }
    void expectToggles(size_t which) const {
        for (const bool covered : {true, false}) {
            click(which);
            expectCovered(covered);
        }
    }

    Paper paper{desktop, 0x4682B4};
};

} // namespace

TEST_F(Buttons, StandOnTheRightToggleAwakeOrDimAndHaveATip) {
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_EQ(agent->buttons()[0].instance, "button:A");
    EXPECT_EQ(agent->buttons()[1].instance, "button:B");
    // Down by 62 % of the travel that 6 pixels at the top and the bottom leave.
    EXPECT_EQ(area(0), (Area{1920 - 50, 6 + 635, 44, 44}));
    EXPECT_EQ(area(1), (Area{3200 - 50, 6 + 600, 44, 44}));

    paper.takeEvents();
    desktop.input.click({area(0).x + 5, area(0).y + 5, 1, 1}); // Beside the disc.
    EXPECT_TRUE(paper.hears(XCB_BUTTON_PRESS, 1));
    expectToggles(0);
    leave();
    ASSERT_SOON(isAwake(0) && isAwake(1));
    ASSERT_SOON(isDim(0) && isDim(1));
    expectToggles(1);
    hover(0);
    EXPECT_SOON(isAwake(0));
    leave();
    EXPECT_SOON(isDim(0));
    drag(1, {{2500, 300}, {2000, 300}});
    EXPECT_EQ(desktop.screen.focus(), paper.number());
    for (const auto& event : paper.takeEvents())
        EXPECT_NE(event.type, XCB_FOCUS_OUT);

    hover(0);
    desktop.input.move(area(0).middle().x + 1, area(0).middle().y);
    const auto top = [&] { return desktop.screen.windows().back(); };
    ASSERT_SOON(top().instance == "tip");
    const int width = top().area.width; // What it says covered is shorter.
    desktop.input.strikeChord();
    EXPECT_SOON(agent->isCovered() && top().instance == "tip" && top().area.width < width);
}

TEST_F(Buttons, MoveAtMoreThanThreePoints) {
    for (const auto& [scale, pixels, drags] :
         {std::tuple{"1", 3, false}, {"1.25", 4, true}, {"2", 6, false}, {"2", 7, true}}) {
        SCOPED_TRACE(testing::Message() << scale << " " << pixels);
        desktop.extra = {{"QT_SCALE_FACTOR", scale}};
        ASSERT_NO_FATAL_FAILURE(start());
        const Area before = area(1);
        const Point from = before.middle();
        drag(1, {{from.x - pixels, from.y}, from});
        const bool covers = !drags;
        EXPECT_SOON(agent->isCovered() == covers);
        expectAt(1, before);
    }
}

TEST_F(Buttons, FollowTheDragAndSettleAtASideOfTheirMonitor) {
    ASSERT_NO_FATAL_FAILURE(start());
    hover(0);
    desktop.input.press(1);
    desktop.input.move(500, 400);
    expectAt(0, {478, 378, 44, 44});
    desktop.input.click(3); // Nothing to a drag.
    const auto compositor = desktop.startCompositor();
    desktop.input.move(510, 400);
    desktop.input.release(1);
    expectAt(0, Area{6, 378, 44, 44}.grown(12)); // With its shadow.
    compositor->send(SIGTERM);
    expectAt(0, {6, 378, 44, 44});
    expectAt(1, {3150, 606, 44, 44}); // The compositor's end has changed it as well.
    drag(1, {{2000, 700}, {400, 300}});
    expectAt(1, {1926, 278, 44, 44});
    drag(0, {{2500, 1070}});
    expectAt(0, {1870, 1030, 44, 44});
    EXPECT_TRUE(agent->visibleCovers().empty() && agent->menus().empty());
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_EQ(area(0), (Area{1870, 1030, 44, 44})) << "after a restart";
    EXPECT_EQ(area(1), (Area{1926, 278, 44, 44})) << "after a restart";
}

TEST_F(Buttons, OpenAMenuAndTakeTheFormThatTheCompositorAllows) {
    ASSERT_NO_FATAL_FAILURE(start());
    const Area plain = area(0);
    desktop.input.hold(controlKey);
    click(0);
    desktop.input.letGo(controlKey);
    EXPECT_SOON(agent->menus().size() == 1);
    EXPECT_FOR(3s, isAwake(0)) << "under its menu";
    const int before = shade(0);
    paper.paint(white);
    closeMenu();
    // What lies behind has changed meanwhile, and it looks again before it dims.
    EXPECT_TRUE(await([&] { return shade(0) > before + 5; }, 1500ms));
    for (const int end : {SIGTERM, SIGKILL}) {
        const auto compositor = desktop.startCompositor();
        expectAt(0, plain.grown(12));
        expectToggles(0);
        agent->openMenu();
        closeMenu();
        compositor->send(end);
        EXPECT_TRUE(compositor->awaitEnd());
        expectAt(0, plain);
        expectToggles(0);
    }
}

TEST_F(Buttons, LeaveNothingBehindOnAMonitorThatGoes) {
    SettingsManager manager(desktop);
    manager.tell("Gtk/CursorThemeName \"one\"");
    ASSERT_NO_FATAL_FAILURE(start());
    for (const char* theme : {"two", "three", "four"}) {
        const auto former = agent->buttons()[0].number;
        agent->openMenu(0, 1);
        desktop.server->xrandr({"--delmonitor", "B"});
        EXPECT_SOON(agent->buttons().size() == 1 && agent->buttons()[0].number != former);
        strike({escapeKey});
        EXPECT_SOON(agent->menus().empty());
        manager.tell("Gtk/CursorThemeName \"" + std::string(theme) + '"');
        expectToggles(0);
        desktop.server->setMonitor("B", Desktop::right);
        ASSERT_SOON(agent->buttons().size() == 2 && agent->buttons()[0].number != former);
    }
}

TEST_F(Buttons, KeepClearOfPanels) {
    const XClient client(desktop.display());
    const auto setStrut = [&](const TestWindow& panel, const std::vector<uint32_t>& strut) {
        client.put(panel.number(), "_NET_WM_STRUT_PARTIAL", XCB_ATOM_CARDINAL, strut);
    };
    ASSERT_NO_FATAL_FAILURE(start());
    const Area right = area(1);
    const Area panelArea = {3140, 0, 60, 1024};
    const auto expectBeside = [&](int width, int height) {
        expectAt(1, {right.x - width, right.y - height, 44, 44});
        EXPECT_EQ(area(0), (Area{1920 - 50, 6 + 635, 44, 44}));
    };
    {
        // Along the right edge of the screen, and below on the right monitor alone.
        TestWindow panel(desktop.display(), panelArea, TestWindow::Kind::Managed);
        setStrut(panel, {0, 60, 0, 0, 0, 0, 0, 1023, 0, 0, 0, 0});
        panel.show();
        expectBeside(60, 0);
        setStrut(panel, {0, 60, 0, 156, 0, 0, 0, 1023, 0, 0, 1920, 3199});
        expectBeside(60, 62);
    }
    expectBeside(0, 0);

    // Window managers may list no panels, and put them into frames of their own.
    client.put(client.root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, {});
    for (const bool framed : {false, true}) {
        SCOPED_TRACE(framed);
        TestWindow frame(desktop.display(), panelArea);
        TestWindow panel(desktop.display(), panelArea);
        constexpr uint32_t wholeEdge = 0; // Where the strip starts, and where it ends.
        setStrut(panel, {0, 60, 0, 0, 0, 0, wholeEdge, wholeEdge, 0, 0, 0, 0});
        if (framed) xcb_reparent_window(client, panel.number(), frame.number(), 0, 0);
        client.settle();
        panel.show();
        if (framed) frame.show();
        expectBeside(60, 0);
        panel.hide();
        expectBeside(0, 0);
    }

    // A shell tells what its own panels leave of each monitor, or of all that it takes for one.
    client.put(client.root(), "_GTK_WORKAREAS_D0", XCB_ATOM_CARDINAL,
               {0, 0, 1920, 1080, 1920, 0, 1200, 1024});
    expectBeside(80, 0);
    client.put(client.root(), "_GTK_WORKAREAS_D0", XCB_ATOM_CARDINAL, {0, 0, 3130, 1080});
    expectBeside(70, 0);
}
