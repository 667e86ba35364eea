// How the menu and the windows look, compared with pictures of them that were found good.
#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Keys.h"
#include "Harness/Portal.h"
#include "Harness/TestWindow.h"
#include "Looks.h"

#include <algorithm>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

struct Look {
    bool dark;
    bool doubled; ///< Everything at twice its size.
};

std::string nameOf(const Look& look) {
    return std::string(look.dark ? "Dark" : "Light") + (look.doubled ? "Double" : "");
}

struct WindowLooks : testing::TestWithParam<Look> {
    // High enough for a window of twice its size.
    WindowLooks()
        : desktop(XServer::framebuffer({"-screen", "0", "3200x1800x24"})),
          paper(desktop.display(), desktop.screen.bounds()) {
        paper.paint(0x4682B4);
        paper.lower();
        paper.show();
        portal.emplace(desktop.bus->address(), false);
        portal->setDark(GetParam().dark);
        desktop.extra = {{"QT_SCALE_FACTOR", GetParam().doubled ? "2" : "1"}};
    }

    void strike(uint8_t key, int times = 1) const {
        for (int i = 0; i < times; ++i)
            desktop.input.strike(key);
    }

    void openMenu() {
        const Area icon = desktop.tray->icons().back();
        aside = -aside; // Two quick clicks on one spot are a double click.
        desktop.input.move(icon.x + icon.width / 2 + aside, icon.y + icon.height / 2);
        desktop.input.click(3);
        ASSERT_TRUE(await([&] { return agent->menus().size() == 1; }));
        desktop.input.move(5, 5);
    }
    void choose(int row) {
        ASSERT_NO_FATAL_FAILURE(openMenu());
        strike(downKey, row);
        strike(returnKey);
    }

    /// The program's windows but for covers, buttons, menus and tips, the newest last.
    std::vector<ScreenWindow> windows() const { return agent->windows(); }

    void expectLook(const Area& area, const std::string& what) const {
        const std::string name = nameOf(GetParam()) + what;
        EXPECT_EQ(awaitLook(desktop.screen, area, name), "") << name;
    }
    void expectWindow(const std::string& what, size_t count = 1) const {
        ASSERT_TRUE(await([&] { return agent->menus().empty() && windows().size() == count; }));
        expectLook(windows().back().area, what);
    }

    Desktop desktop;
    TestWindow paper;
    std::optional<Portal> portal;
    std::optional<Agent> agent;
    int aside = 5;
};

} // namespace

TEST_P(WindowLooks, AreTheOnesThatWereFoundGood) {
    agent.emplace(desktop);
    ASSERT_TRUE(await([&] { return agent->buttons().size() == 1; }));

    ASSERT_NO_FATAL_FAILURE(openMenu());
    expectLook(agent->menus().at(0).area, "Menu");
    strike(downKey, 4);
    strike(rightKey);
    ASSERT_TRUE(await([&] { return agent->menus().size() == 2; }));
    strike(returnKey);
    ASSERT_NO_FATAL_FAILURE(expectWindow("Alert"));
    strike(escapeKey);
    ASSERT_TRUE(await([&] { return windows().empty(); }));

    ASSERT_NO_FATAL_FAILURE(choose(3));
    ASSERT_NO_FATAL_FAILURE(expectWindow("Summit"));
    strike(escapeKey);
    ASSERT_TRUE(await([&] { return windows().empty(); }));

    ASSERT_NO_FATAL_FAILURE(choose(6));
    ASSERT_NO_FATAL_FAILURE(expectWindow("About"));
    strike(escapeKey);
    ASSERT_TRUE(await([&] { return windows().empty(); }));

    ASSERT_NO_FATAL_FAILURE(choose(5));
    ASSERT_NO_FATAL_FAILURE(expectWindow("General"));
    const Area settings = windows().at(0).area;
    const int scale = GetParam().doubled ? 2 : 1;
    desktop.input.move(settings.x + settings.width / 2 + 36 * scale, settings.y + 28 * scale);
    desktop.input.click(1);
    desktop.input.move(5, 5);
    ASSERT_NO_FATAL_FAILURE(expectWindow("Support"));
}

INSTANTIATE_TEST_SUITE_P(All, WindowLooks,
                         testing::Values(Look{false, false}, Look{true, false}, Look{false, true},
                                         Look{true, true}),
                         [](const auto& each) { return nameOf(each.param); });
