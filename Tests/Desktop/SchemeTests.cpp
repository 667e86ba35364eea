// The desktop changes between light and dark while the program's windows are open.
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

constexpr uint32_t solid = 0x0E1015; ///< The cover where contrast is wished for.

struct Scheme : testing::Test {
    Scheme()
        : desktop(XServer::framebuffer({"-screen", "0", "3200x1800x24"})),
          paper(desktop.display(), desktop.screen.bounds()), portal(desktop.bus->address(), false) {
        paper.paint(0x4682B4);
        paper.lower();
        paper.show();
        desktop.extra = {{"QT_SCALE_FACTOR", "1"}};
        agent.emplace(desktop);
        EXPECT_TRUE(await([&] { return agent->buttons().size() == 1; }));
    }

    void openMenu() {
        const Area icon = desktop.tray->icons().back();
        m_aside = -m_aside; // Two quick clicks on one spot are a double click.
        desktop.input.move(icon.x + icon.width / 2 + m_aside, icon.y + icon.height / 2);
        desktop.input.click(3);
        ASSERT_TRUE(await([&] { return agent->menus().size() == 1; }));
        desktop.input.move(5, 5);
    }
    /// Opens what stands in the menu's row, and tells the window of it.
    void choose(int row, size_t windowsThen) {
        ASSERT_NO_FATAL_FAILURE(openMenu());
        for (int i = 0; i < row; ++i)
            desktop.input.strike(downKey);
        desktop.input.strike(returnKey);
        ASSERT_TRUE(
            await([&] { return agent->menus().empty() && windows().size() == windowsThen; }));
    }
    std::vector<ScreenWindow> windows() const { return agent->windows(); }

    /// Empty once all that is seen of the area is as in the picture.
    std::string complaint(const Area& area, const std::string& name) const {
        std::string text;
        await([&] {
            text = complaintAbout(desktop.screen.grab(area), name);
            return text.empty();
        });
        return text;
    }

    Desktop desktop;
    TestWindow paper;
    Portal portal;
    std::optional<Agent> agent;

private:
    int m_aside = 5;
};

} // namespace

TEST_F(Scheme, ChangesEveryWindowThatIsOpen) {
    const std::pair<int, const char*> rows[] = {{6, "About"}, {3, "Summit"}, {5, "General"}};
    for (const auto& [row, name] : rows) {
        ASSERT_NO_FATAL_FAILURE(choose(row, 1));
        const ScreenWindow window = windows().back();
        for (const char* scheme : {"Dark", "Light", "Dark", "Light"}) {
            portal.setDark(scheme == std::string("Dark"));
            EXPECT_EQ(complaint(window.area, std::string(scheme) + name), "") << scheme << name;
            EXPECT_EQ(windows().back().number, window.number);
        }
        const XClient& client = paper.client();
        client.send(window.number, client.atom("WM_PROTOCOLS"), XCB_EVENT_MASK_NO_EVENT,
                    {client.atom("WM_DELETE_WINDOW"), XCB_CURRENT_TIME, 0, 0, 0});
        ASSERT_TRUE(await([&] { return windows().empty(); }));
    }
}

TEST_F(Scheme, ChangesTheMenuThatIsOpen) {
    ASSERT_NO_FATAL_FAILURE(openMenu());
    const Area menu = agent->menus()[0].area;
    for (const char* scheme : {"Dark", "Light", "Dark", "Light"}) {
        portal.setDark(scheme == std::string("Dark"));
        EXPECT_EQ(complaint(menu, std::string(scheme) + "Menu"), "") << scheme;
        EXPECT_EQ(agent->menus().size(), 1u);
    }
    desktop.input.strike(escapeKey);
    EXPECT_TRUE(await([&] { return agent->menus().empty(); }));
}

TEST_F(Scheme, AndContrastChangeWhileCovered) {
    ASSERT_NO_FATAL_FAILURE(choose(3, 1));
    const ScreenWindow window = windows().back();
    agent->cover();
    const Area ground = {100, 100, 200, 200};
    for (const bool contrast : {true, false, true, false})
        for (const char* scheme : {"Dark", "Light"}) {
            portal.setHighContrast(contrast);
            portal.setDark(scheme == std::string("Dark"));
            EXPECT_TRUE(
                await([&] { return desktop.screen.grab(ground).isAll(solid) == contrast; }));
            EXPECT_EQ(complaint(window.area, std::string(scheme) + "Summit"), "") << scheme;
            EXPECT_TRUE(agent->isCovered());
        }
}
