#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Paper.h"

#include <cmath>
#include <csignal>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

constexpr double tint = 0.6;  // what the dark glass lets through
constexpr double spread = 84; // the blur's standard deviation in pixels
constexpr int smoothStep = 3; // the steepest slope of such a blur, and rounding

double meanOf(const Desktop& desktop, const Area& area) { return desktop.screen.grab(area).mean(); }

class Blur : public testing::TestWithParam<bool> {
protected:
    Blur() : paper(desktop.display(), desktop.screen.bounds()) {
        paper.paint(white);
        paper.lower();
        paper.show();
        if (GetParam()) compositor = desktop.startCompositor();
    }

    /// A compositor shows a new window some frames after it was mapped.
    void cover(Agent& agent) {
        agent.cover();
        EXPECT_SOON(desktop.screen.grab({0, 500, 3200, 1}).count(white) == 0);
    }

    Desktop desktop;
    TestWindow paper;
    std::unique_ptr<Process> compositor;
};

} // namespace

TEST_P(Blur, MakesChecksOneDarkGrey) {
    for (const int size : {1, 2, 8, 20}) {
        paper.paintChecks(size);
        Agent agent(desktop);
        const Picture clear = desktop.screen.grabWithoutButtons(Desktop::right);
        cover(agent);
        for (const Area& monitor : {Desktop::left, Desktop::right}) {
            const Area inside = {monitor.x + 200, monitor.y + 200, monitor.width - 400,
                                 monitor.height - 400};
            const Picture picture = desktop.screen.grab(inside);
            EXPECT_LE(picture.sharpestStep(), smoothStep) << "checks of " << size;
            EXPECT_NEAR(picture.mean(), 255 / 2.0 * tint, 4) << "checks of " << size;
        }
        agent.uncover();
        if (compositor) continue; // It may be late, now and with what is clear.
        EXPECT_EQ(desktop.screen.grabWithoutButtons(Desktop::right), clear) << "it leaves a trace";
    }
}

TEST_P(Blur, SpreadsAnEdgeAsAGaussianDoes) {
    const int edge = 960;
    paper.paint(3200, 1, [](int x, int) { return x < edge ? white : black; });
    Agent agent(desktop);
    cover(agent);

    for (const double sigmas : {-2.0, -1.0, -0.5, 0.0, 0.5, 1.0, 2.0}) {
        const int x = edge + static_cast<int>(sigmas * spread);
        const double expected = 255 * tint * std::erfc(sigmas / std::sqrt(2)) / 2;
        EXPECT_NEAR(meanOf(desktop, {x - 2, 500, 4, 40}), expected, 6) << sigmas << " sigmas";
    }
}

TEST_P(Blur, FollowsWhatComesMovesChangesAndGoesBelow) {
    const Area from = {100, 100, 700, 700};
    const Area to = {1000, 200, 800, 800};
    TestWindow visitor(desktop.display(), from);
    visitor.paint(white);
    visitor.lower();
    paper.lower();
    Agent agent(desktop);
    cover(agent);
    for (const uint32_t colour : {black, white, black}) {
        paper.paint(colour);
        const double expected = colour == white ? 255 * tint : 0;
        for (const Area& monitor : {Desktop::left, Desktop::right})
            EXPECT_SOON(std::abs(meanOf(desktop, monitor) - expected) < 6)
                << monitor << " has stayed at " << meanOf(desktop, monitor);
    }
    const auto isBright = [&](const Area& area) {
        return meanOf(desktop, {area.x + 300, area.y + 300, 50, 50}) > 80;
    };
    visitor.show();
    EXPECT_SOON(isBright(from) && !isBright(to));
    visitor.place(to);
    EXPECT_SOON(!isBright(from) && isBright(to));
    const double before = meanOf(desktop, Desktop::left);
    EXPECT_FOR(1500ms, std::abs(meanOf(desktop, Desktop::left) - before) < 2)
        << "it feeds on itself: " << before << " is now " << meanOf(desktop, Desktop::left);
    visitor.hide();
    EXPECT_SOON(!isBright(from) && !isBright(to));
}

INSTANTIATE_TEST_SUITE_P(Desktop, Blur, testing::Bool(), [](const auto& each) {
    return each.param ? "WithACompositor" : "WithoutACompositor";
});

TEST(BlurUnderChange, SurvivesACompositorThatComesAndGoes) {
    Desktop desktop;
    Paper paper(desktop);
    Agent agent(desktop);
    agent.cover();
    bool leaked = false;
    const auto shows = [&](uint32_t colour) {
        const double expected = colour == white ? 255 * tint : 0;
        paper.paint(colour);
        return await(
            [&] {
                const Picture row = desktop.screen.grab({0, 500, 3200, 1});
                leaked = leaked || row.count(white) > 0;
                return std::abs(row.mean() - expected) < 6;
            },
            5s);
    };

    for (const int end : {SIGTERM, SIGKILL}) {
        const auto compositor = desktop.startCompositor();
        EXPECT_TRUE(shows(black) && shows(white)) << "with a compositor";
        compositor->send(end);
        EXPECT_TRUE(compositor->awaitEnd());
        EXPECT_TRUE(shows(black) && shows(white)) << "after signal " << end;
    }
    EXPECT_FALSE(leaked) << "what lies below was to be seen for a moment";
}
