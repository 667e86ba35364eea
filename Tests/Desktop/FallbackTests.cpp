// Servers that lack something, or show their pixels in another way.
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"

#include <list>

using namespace Harness;

namespace {

struct Lack {
    const char* extension;
    const char* log; ///< All that the program itself ever writes of it.
};

struct Fallback : OnDesktop, testing::WithParamInterface<Lack> {
    Fallback() : OnDesktop(Desktop::twoMonitors({"-extension", GetParam().extension})) {}
};

struct Depths : testing::TestWithParam<int> {};

} // namespace

TEST_P(Fallback, CoversWithABlurredPictureOfThisMoment) {
    Paper paper(desktop);
    ASSERT_NO_FATAL_FAILURE(start());
    // Fine checks that get lighter in the second monitor's right half.
    paper.paint(3200, 8, [](int x, int y) {
        if ((x / 4 + y / 4) % 2 == 0) return black;
        return x < 2560 ? 0x606060U : white;
    });

    agent->cover();

    for (const Area& monitor : {Desktop::left, Desktop::right}) {
        const Picture picture = desktop.screen.grabWithoutButtons(monitor);
        EXPECT_EQ(picture.count(white), 0U) << monitor;
        EXPECT_LE(picture.sharpestStep(), 4) << monitor;
    }
    const auto meanAt = [&](int x) { return desktop.screen.grab({x, 300, 100, 400}).mean(); };
    EXPECT_NEAR(meanAt(900), 0x60 / 2.0 * 0.6, 8);
    EXPECT_GT(meanAt(3000), meanAt(2000) + 20);
    agent->uncover();
    agent->cover();
    EXPECT_EQ(agent->process().errors(), GetParam().log);
    agent.reset(); // Without XFixes this server ends as soon as any client goes.
}

INSTANTIATE_TEST_SUITE_P(
    Without, Fallback,
    testing::Values(Lack{"Composite", "X11: Composite missing: the cover shows a still picture.\n"},
                    Lack{"DAMAGE", "X11: Damage missing: the cover shows a still picture.\n"},
                    Lack{"RENDER", "X11: Render missing: the cover shows a still picture.\n"},
                    Lack{"XFIXES", "X11: XFixes missing: the cover shows a still picture.\n"},
                    Lack{"MIT-SHM", ""}),
    [](const auto& each) { return letters(each.param.extension); });

TEST_P(Depths, AreCovered) {
    Desktop desktop(
        Desktop::twoMonitors({"-screen", "0", "3200x1080x" + std::to_string(GetParam())}));
    const XClient client(desktop.display());
    const uint32_t bright = client.screen().white_pixel;
    xcb_change_window_attributes(client, client.root(), XCB_CW_BACK_PIXEL, &bright);
    xcb_clear_area(client, 0, client.root(), 0, 0, 0, 0);
    client.settle();
    std::list<TestWindow> letters;
    for (int x = 300; x < 1000; x += 40) {
        letters.emplace_back(desktop.display(), Area{x, 300, 20, 200}).paint(black);
        letters.back().show();
    }
    Agent agent(desktop);
    ASSERT_EQ(desktop.screen.grab({300, 300, 40, 1}).sharpestStep(), 255);
    agent.cover();
    EXPECT_TRUE(holdsFor(300ms, [&] {
        const Picture picture = desktop.screen.grab({200, 200, 900, 400});
        // A step of red, green or blue is 8 where each has 5 bits.
        return picture.sharpestStep() <= 8 && picture.brightest() <= 160;
    }));
    // Live, and bright where the screen is.
    EXPECT_NEAR(desktop.screen.grab({2500, 100, 200, 200}).mean(), 153, 8);
    EXPECT_EQ(agent.process().errors(), "");
}

INSTANTIATE_TEST_SUITE_P(Of, Depths, testing::Values(16, 30));
