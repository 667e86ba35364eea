// Servers that lack something, or show their pixels in another way.
#include "Harness/OnDesktop.h"

#include <list>

using namespace Harness;

namespace {

struct Odd {
    std::vector<std::string> arguments;
    std::string missing; ///< What is told of it, before the cover shows a still picture.
};

struct Fallback : OnDesktop, testing::WithParamInterface<Odd> {
    Fallback() : OnDesktop(Desktop::twoMonitors(GetParam().arguments)) {}
};

} // namespace

TEST_P(Fallback, CoversWithABlurredPictureOfThisMoment) {
    const XClient client(desktop.display());
    const uint32_t bright = client.screen().white_pixel;
    xcb_change_window_attributes(client, client.root(), XCB_CW_BACK_PIXEL, &bright);
    xcb_clear_area(client, 0, client.root(), 0, 0, 0, 0);
    client.settle();
    ASSERT_NO_FATAL_FAILURE(start());
    std::list<TestWindow> lines;
    for (int x = 300; x < 1100; x += 8) {
        lines.emplace_back(desktop.display(), Area{x, 150, 4, 800}).paint(black);
        lines.back().show();
    }
    ASSERT_EQ(desktop.screen.grab({300, 300, 40, 1}).sharpestStep(), 255);
    agent->cover();
    EXPECT_TRUE(holdsFor(300ms, [&] {
        return std::ranges::all_of(desktop.screen.monitors(), [&](const Area& monitor) {
            const Picture picture = desktop.screen.grabWithoutButtons(monitor);
            // A step of red, green or blue is 8 where each has 5 bits.
            return picture.sharpestStep() <= 8 && picture.brightest() <= 160;
        });
    }));
    const auto meanAt = [&](int x) { return desktop.screen.grab({x, 500, 50, 50}).mean(); };
    EXPECT_NEAR(meanAt(700), 153 / 2.0, 8);
    EXPECT_NEAR(meanAt(2500), 153, 8);
    agent->uncover();
    agent->cover();
    const std::string& missing = GetParam().missing;
    EXPECT_EQ(agent->process().errors(),
              missing.empty() ? ""
                              : "X11: " + missing + " missing: the cover shows a still picture.\n");
    agent.reset(); // Without XFixes this server ends as soon as any client goes.
}

INSTANTIATE_TEST_SUITE_P(Servers, Fallback,
                         testing::Values(Odd{{"-extension", "Composite"}, "Composite"},
                                         Odd{{"-extension", "DAMAGE"}, "Damage"},
                                         Odd{{"-extension", "RENDER"}, "Render"},
                                         Odd{{"-extension", "XFIXES"}, "XFixes"},
                                         Odd{{"-extension", "MIT-SHM"}, ""},
                                         Odd{{"-screen", "0", "3200x1080x16"}, ""},
                                         Odd{{"-screen", "0", "3200x1080x30"}, ""}),
                         [](const auto& each) { return letters(each.param.arguments.back()); });
