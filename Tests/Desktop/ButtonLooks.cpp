// How the floating button looks, compared with pictures of it that were found good.
#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/TestWindow.h"
#include "Looks.h"

#include <cstdlib>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

constexpr uint32_t paperColour = 0x4682B4;
constexpr int around = 12; ///< So many points around the disc belong to the picture.

struct Look {
    const char* scale;
    bool composited;
};

std::string nameOf(const Look& look) {
    std::string name = std::string("Scale") + look.scale;
    std::erase(name, '.');
    return name + (look.composited ? "Composited" : "Plain");
}

class ButtonLooks : public testing::TestWithParam<Look> {};

} // namespace

TEST_P(ButtonLooks, AreTheOnesThatWereFoundGood) {
    Desktop desktop;
    desktop.extra = {{"QT_SCALE_FACTOR", GetParam().scale}};
    TestWindow paper(desktop.display(), desktop.screen.bounds());
    paper.paint(paperColour);
    paper.lower();
    paper.show();
    desktop.input.move(960, 300);
    const auto compositor = GetParam().composited ? desktop.startCompositor() : nullptr;
    Agent agent(desktop);
    ASSERT_TRUE(await([&] { return agent.buttons().size() == 2; }));

    const auto expectLook = [&](const char* state) {
        const double scale = std::atof(GetParam().scale);
        const int margin = static_cast<int>((GetParam().composited ? 0 : around) * scale);
        Area area = agent.buttons()[1].area;
        area = {area.x - margin, area.y - margin, area.width + 2 * margin,
                area.height + 2 * margin};
        area.width = std::min(area.width, desktop.screen.bounds().width - area.x);
        const std::string name = nameOf(GetParam()) + state;
        EXPECT_EQ(awaitLook(desktop.screen, area, name), "") << name;
    };
    expectLook("Awake");
    expectLook("Dim");
    agent.cover();
    expectLook("Blurred");
}

INSTANTIATE_TEST_SUITE_P(All, ButtonLooks,
                         testing::Values(Look{"1", false}, Look{"1", true}, Look{"1.25", false},
                                         Look{"1.25", true}, Look{"2", false}, Look{"2", true}),
                         [](const auto& each) { return nameOf(each.param); });
