#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Paper.h"

#include <gtest/gtest.h>

using namespace Harness;

namespace {

// White below the tint, however much of it is blurred.
constexpr int brightestCovered = 160;

struct Layout {
    const char* name;
    std::vector<std::pair<const char*, const char*>> monitors; // RandR's geometry, and its output
    Area clear = {};                                           // on no monitor
    Environment scale = {};
};

class CoverLayouts : public testing::TestWithParam<Layout> {};

} // namespace

TEST_P(CoverLayouts, EveryPixelOfEveryMonitorAndNoOther) {
    auto server = XServer::framebuffer();
    int number = 0;
    for (const auto& [geometry, output] : GetParam().monitors)
        server->xrandr({"--setmonitor", std::to_string(number++), geometry, output});
    Desktop desktop(std::move(server));
    desktop.extra = GetParam().scale;
    Paper paper(desktop);
    Agent agent(desktop);

    agent.cover();

    for (const Area& monitor : desktop.screen.monitors())
        EXPECT_LE(desktop.screen.grabWithoutButtons(monitor).brightest(), brightestCovered)
            << monitor;
    if (const Area& clear = GetParam().clear; clear.width > 0) {
        EXPECT_TRUE(desktop.screen.grab(clear).isAll(white)) << clear;
    }
}

INSTANTIATE_TEST_SUITE_P(Scaled, CoverLayouts, testing::ValuesIn([] {
                             const std::pair<const char*, Environment> scales[] = {
                                 {"ByAQuarter", {{"QT_SCALE_FACTOR", "1.25"}}},
                                 {"ByAHalf", {{"QT_SCALE_FACTOR", "1.5"}}},
                                 {"Double", {{"QT_SCALE_FACTOR", "2"}}},
                                 {"EachByItself", {{"QT_SCREEN_SCALE_FACTORS", "1;2"}}},
                                 {"EachByAFraction", {{"QT_SCREEN_SCALE_FACTORS", "1.5;1.25"}}},
                             };
                             std::vector<Layout> layouts;
                             for (const auto& [name, scale] : scales)
                                 layouts.push_back({name,
                                                    {{"1367/340x769/270+0+0", "screen"},
                                                     {"801/340x601/270+1367+13", "none"}},
                                                    {0, 800, 500, 200},
                                                    scale});
                             return layouts;
                         }()),
                         [](const auto& each) { return each.param.name; });

INSTANTIATE_TEST_SUITE_P(
    All, CoverLayouts,
    testing::Values(
        Layout{"OneForTheWholeScreen", {}},
        Layout{"DifferentHeights",
               {{"1920/500x1080/290+0+0", "screen"}, {"1280/340x1024/270+1920+0", "none"}},
               Desktop::deadZone},
        Layout{"FirstNotAtTheOrigin",
               {{"1280/340x800/270+1920+280", "screen"}, {"1920/500x1080/290+0+0", "none"}},
               {1920, 0, 1280, 280}},
        Layout{"OddSizes",
               {{"1367/340x769/270+0+0", "screen"}, {"801/340x601/270+1367+13", "none"}},
               {0, 800, 500, 200}},
        Layout{"EightSmall",
               {{"800/200x540/140+0+0", "screen"},
                {"800/200x540/140+800+0", "none"},
                {"800/200x540/140+1600+0", "none"},
                {"800/200x540/140+2400+0", "none"},
                {"800/200x540/140+0+540", "none"},
                {"800/200x540/140+800+540", "none"},
                {"800/200x540/140+1600+540", "none"},
                {"800/200x540/140+2400+540", "none"}}}),
    [](const auto& each) { return each.param.name; });

TEST(Cover, HasGoneWithoutATraceAfterTheSecondClick) {
    Desktop desktop;
    TestWindow paper(desktop.display(), desktop.screen.bounds());
    paper.paintChecks(8);
    paper.lower();
    paper.show();
    Agent agent(desktop);
    const Area aboveTheTray = {0, 0, 3200, 1080 - Tray::iconSize};
    const Picture before = desktop.screen.grabWithoutButtons(aboveTheTray);

    agent.cover();
    agent.uncover();

    EXPECT_EQ(desktop.screen.grabWithoutButtons(aboveTheTray), before);
}

TEST(Cover, FollowsEveryOneOfThreeQuickClicks) {
    Desktop desktop;
    Agent agent(desktop);

    agent.toggle();
    agent.toggle();
    agent.toggle();

    EXPECT_TRUE(await([&] { return agent.isCovered(); }));
    EXPECT_TRUE(holdsFor(500ms, [&] { return agent.isCovered(); }));
}
