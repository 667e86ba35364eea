// The desktop changes between light and dark while the program's windows are open.
#include "Looks.h"
#include "Showcase.h"

using namespace Harness;

namespace {

constexpr uint32_t solid = 0x0E1015; ///< The cover where contrast is wished for.

struct Scheme : testing::Test, Showcase {
    void expectLook(const Area& area, const std::string& name) const {
        EXPECT_EQ(awaitLook(desktop.screen, area, name), "") << name;
    }
};

} // namespace

TEST_F(Scheme, ChangesEveryWindowThatIsOpen) {
    const std::pair<int, const char*> rows[] = {{6, "About"}, {3, "Summit"}, {5, "General"}};
    for (const auto& [row, name] : rows) {
        ASSERT_NO_FATAL_FAILURE(choose(row));
        const ScreenWindow window = agent->windows().back();
        for (const char* scheme : {"Dark", "Light", "Dark", "Light"}) {
            portal.setDark(scheme == std::string("Dark"));
            expectLook(window.area, std::string(scheme) + name);
            EXPECT_EQ(agent->windows().back().number, window.number);
        }
        const XClient& client = paper.client();
        client.send(window.number, client.atom("WM_PROTOCOLS"), XCB_EVENT_MASK_NO_EVENT,
                    {client.atom("WM_DELETE_WINDOW"), XCB_CURRENT_TIME, 0, 0, 0});
        ASSERT_TRUE(await([&] { return agent->windows().empty(); }));
    }
}

TEST_F(Scheme, ChangesTheMenuThatIsOpen) {
    ASSERT_NO_FATAL_FAILURE(openMenu());
    const Area menu = agent->menus()[0].area;
    for (const char* scheme : {"Dark", "Light", "Dark", "Light"}) {
        portal.setDark(scheme == std::string("Dark"));
        expectLook(menu, std::string(scheme) + "Menu");
        EXPECT_EQ(agent->menus().size(), 1u);
    }
    desktop.input.strike(escapeKey);
    EXPECT_TRUE(await([&] { return agent->menus().empty(); }));
}

TEST_F(Scheme, AndContrastChangeWhileCovered) {
    ASSERT_NO_FATAL_FAILURE(choose(3));
    const ScreenWindow window = agent->windows().back();
    agent->cover();
    const Area ground = {100, 100, 200, 200};
    for (const bool contrast : {true, false, true, false})
        for (const char* scheme : {"Dark", "Light"}) {
            portal.setHighContrast(contrast);
            portal.setDark(scheme == std::string("Dark"));
            EXPECT_TRUE(
                await([&] { return desktop.screen.grab(ground).isAll(solid) == contrast; }));
            expectLook(window.area, std::string(scheme) + "Summit");
            EXPECT_TRUE(agent->isCovered());
        }
}
