#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/NotifierTray.h"
#include "Harness/TestWindow.h"

#include <sstream>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

struct Lack {
    const char* extension;
    const char* log; ///< All that the program ever writes of it.
};

/// The lines of a log that begin so.
std::string linesOf(const std::string& beginning, const std::string& log) {
    std::string result;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with(beginning)) result += line + '\n';
    return result;
}

std::string nameOf(const testing::TestParamInfo<Lack>& info) {
    std::string name = info.param.extension;
    std::erase(name, '-');
    return name;
}

class Fallback : public testing::TestWithParam<Lack> {};

} // namespace

TEST_P(Fallback, CoversWithABlurredPictureOfThisMoment) {
    Desktop desktop(Desktop::twoMonitors({"-extension", GetParam().extension}));
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
    agent.cover();
    EXPECT_EQ(agent.process().errors(), GetParam().log);
}

class Depths : public testing::TestWithParam<int> {};

TEST_P(Depths, AreCovered) {
    Desktop desktop(
        Desktop::twoMonitors({"-screen", "0", "3200x1080x" + std::to_string(GetParam())}));
    const XClient client(desktop.display());
    const uint32_t bright = client.screen().white_pixel;
    xcb_change_window_attributes(client, client.root(), XCB_CW_BACK_PIXEL, &bright);
    xcb_clear_area(client, 0, client.root(), 0, 0, 0, 0);
    client.settle();
    std::vector<std::unique_ptr<TestWindow>> letters;
    for (int x = 300; x < 1000; x += 40) {
        letters.push_back(std::make_unique<TestWindow>(desktop.display(), Area{x, 300, 20, 200}));
        letters.back()->paint(black);
        letters.back()->show();
    }
    Agent agent(desktop);
    ASSERT_EQ(desktop.screen.grab({300, 300, 40, 1}).sharpestStep(), 255);

    agent.cover();

    EXPECT_TRUE(holdsFor(300ms, [&] {
        const Picture text = desktop.screen.grab({200, 200, 900, 400});
        // A step of red, green or blue is 8 where each has 5 bits.
        return text.sharpestStep() <= 8 && text.brightest() <= 160;
    }));
    // Live, and bright where the screen is.
    EXPECT_NEAR(desktop.screen.grab({2500, 100, 200, 200}).mean(), 153, 8);
    EXPECT_EQ(agent.process().errors(), "");
    agent.uncover();
}

INSTANTIATE_TEST_SUITE_P(Of, Depths, testing::Values(16, 24, 30));

INSTANTIATE_TEST_SUITE_P(
    Without, Fallback,
    testing::Values(Lack{"Composite", "X11: Composite missing: the cover shows a still picture.\n"},
                    Lack{"DAMAGE", "X11: Damage missing: the cover shows a still picture.\n"},
                    Lack{"RENDER", "X11: Render missing: the cover shows a still picture.\n"},
                    Lack{"XFIXES", "X11: XFixes missing: the cover shows a still picture.\n"},
                    Lack{"MIT-SHM", ""}),
    nameOf);

namespace {

/// The program under a white paper, its icon clicked over the bus, which takes nothing of the
/// server.
class Bare {
public:
    explicit Bare(const std::vector<std::string>& arguments)
        : desktop(XServer::framebuffer(arguments)), icons(desktop.bus->address()),
          paper(desktop.display(), desktop.screen.bounds()) {
        desktop.tray.reset();
        paper.paint(white);
        paper.lower();
        paper.show();
        agent.emplace(desktop);
        EXPECT_TRUE(await([&] { return !icons.items().isEmpty(); }));
    }

    bool isDark() const {
        return agent->isCovered() &&
               desktop.screen.grabWithoutButtons(desktop.screen.bounds()).brightest() <= 160;
    }

    Desktop desktop;
    NotifierTray icons;
    TestWindow paper;
    std::optional<Agent> agent;
};

class FallbackOnTheBus : public testing::TestWithParam<Lack> {};

} // namespace

TEST_P(FallbackOnTheBus, Covers) {
    Bare bare({"-extension", GetParam().extension});
    for (int round = 0; round < 2; ++round) {
        bare.icons.click(0, 0);
        EXPECT_TRUE(await([&] { return bare.isDark(); }));
        bare.icons.click(0, 0);
        EXPECT_TRUE(await([&] { return bare.agent->visibleCovers().empty(); }));
    }
    // The toolkit has lines of its own.
    EXPECT_EQ(linesOf("X11: ", bare.agent->process().errors()), GetParam().log);
}

INSTANTIATE_TEST_SUITE_P(Without, FallbackOnTheBus,
                         testing::Values(Lack{"RANDR",
                                              "X11: RandR missing: the whole screen counts as one "
                                              "monitor.\n"},
                                         Lack{"XTEST", ""}),
                         nameOf);
