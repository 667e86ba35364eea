// How the menu and the windows look, compared with pictures of them that were found good.
#include "Looks.h"
#include "Showcase.h"

using namespace Harness;

namespace {

struct Look {
    bool dark;
    bool doubled; ///< Everything at twice its size.
};

std::string nameOf(const Look& look) {
    return std::string(look.dark ? "Dark" : "Light") + (look.doubled ? "Double" : "");
}

struct WindowLooks : testing::TestWithParam<Look>, Showcase {
    WindowLooks() : Showcase(GetParam().doubled ? "2" : "1", GetParam().dark) {}

    void expectLook(const Area& area, const std::string& what) const {
        const std::string name = nameOf(GetParam()) + what;
        EXPECT_EQ(awaitLook(desktop.screen, area, name), "") << name;
    }
    void expectWindow(const std::string& what) const {
        ASSERT_TRUE(await([&] { return agent->menus().empty() && agent->windows().size() == 1; }));
        expectLook(agent->windows().back().area, what);
    }
    void close() const {
        strike(escapeKey);
        ASSERT_TRUE(await([&] { return agent->windows().empty(); }));
    }
};

} // namespace

TEST_P(WindowLooks, AreTheOnesThatWereFoundGood) {
    ASSERT_NO_FATAL_FAILURE(openMenu());
    expectLook(agent->menus().at(0).area, "Menu");
    strike(downKey, 4);
    strike(rightKey);
    ASSERT_TRUE(await([&] { return agent->menus().size() == 2; }));
    strike(returnKey);
    ASSERT_NO_FATAL_FAILURE(expectWindow("Alert"));
    ASSERT_NO_FATAL_FAILURE(close());

    ASSERT_NO_FATAL_FAILURE(choose(3));
    ASSERT_NO_FATAL_FAILURE(expectWindow("Summit"));
    ASSERT_NO_FATAL_FAILURE(close());

    ASSERT_NO_FATAL_FAILURE(choose(6));
    ASSERT_NO_FATAL_FAILURE(expectWindow("About"));
    ASSERT_NO_FATAL_FAILURE(close());

    ASSERT_NO_FATAL_FAILURE(choose(5));
    ASSERT_NO_FATAL_FAILURE(expectWindow("General"));
    const Area settings = agent->windows().at(0).area;
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
