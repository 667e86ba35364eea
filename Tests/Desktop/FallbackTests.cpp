#include "Harness/Agent.h"
#include "Harness/TestWindow.h"

#include <gtest/gtest.h>

using namespace Harness;

namespace {

class Fallback : public testing::TestWithParam<const char*> {};

} // namespace

TEST_P(Fallback, CoversWithABlurredPictureOfThisMoment) {
    Desktop desktop(Desktop::twoMonitors({"-extension", GetParam()}));
    TestWindow paper(desktop.display(), desktop.screen.bounds());
    paper.lower();
    paper.show();
    Agent agent(desktop);
    // Fine checks that get lighter in the second monitor's right half.
    paper.paint(3200, 8, [](int x, int y) {
        if ((x / 4 + y / 4) % 2 == 0) return black;
        return x < 2560 ? 0x606060U : white;
    });

    agent.cover();

    for (const Area& monitor : {Desktop::left, Desktop::right}) {
        const Picture picture = desktop.screen.grabWithoutButtons(monitor);
        EXPECT_EQ(picture.count(white), 0U) << monitor;
        EXPECT_LE(picture.sharpestStep(), 4) << monitor;
    }
    const auto meanAt = [&](int x) { return desktop.screen.grab({x, 300, 100, 400}).mean(); };
    EXPECT_NEAR(meanAt(900), 0x60 / 2.0 * 0.6, 8);
    EXPECT_GT(meanAt(3000), meanAt(2000) + 20);
    agent.uncover();
}

INSTANTIATE_TEST_SUITE_P(Without, Fallback,
                         testing::Values("Composite", "DAMAGE", "RENDER", "XFIXES", "MIT-SHM"),
                         [](const auto& each) {
                             std::string name = each.param;
                             std::erase(name, '-');
                             return name;
                         });
