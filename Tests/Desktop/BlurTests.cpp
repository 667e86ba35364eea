#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"

#include <cmath>

using namespace Harness;

namespace {

constexpr double tint = 0.6;  // what the dark glass lets through
constexpr int smoothStep = 3; // the steepest slope of such a blur, and rounding

double meanOf(const Desktop& desktop, const Area& area) { return desktop.screen.grab(area).mean(); }

struct Blur : OnDesktop, testing::WithParamInterface<bool> {
    /// A compositor shows a new window some frames after it was mapped.
    void cover() {
        start();
        agent->cover();
        EXPECT_SOON(desktop.screen.grab({0, 500, 3200, 1}).count(white) == 0);
    }

    Paper paper{desktop};
    std::unique_ptr<Process> compositor = GetParam() ? desktop.startCompositor() : nullptr;
};

} // namespace

TEST_P(Blur, MakesChecksOneDarkGrey) {
    for (const int size : {1, 2, 8, 20}) {
        paper.paintChecks(size);
        cover();
        for (const Area& monitor : {Desktop::left, Desktop::right}) {
            const Area inside = {monitor.x + 200, monitor.y + 200, monitor.width - 400,
                                 monitor.height - 400};
            const Picture picture = desktop.screen.grab(inside);
            EXPECT_LE(picture.sharpestStep(), smoothStep) << "checks of " << size;
            EXPECT_NEAR(picture.mean(), 255 / 2.0 * tint, 4) << "checks of " << size;
        }
    }
}

TEST_P(Blur, FollowsWhatComesMovesChangesAndGoesBelow) {
    const Area from = {100, 100, 700, 700};
    const Area to = {1000, 200, 800, 800};
    TestWindow visitor(desktop.display(), from);
    visitor.paint(white);
    visitor.lower();
    paper.lower();
    cover();
    for (const Area& monitor : {Desktop::left, Desktop::right})
        paper.expectShownThrough(desktop.screen, monitor);
    paper.paint(black);
    const auto isBright = [&](const Area& area) {
        return meanOf(desktop, {area.x + 300, area.y + 300, 50, 50}) > 80;
    };
    visitor.show();
    EXPECT_SOON(isBright(from) && !isBright(to));
    visitor.place(to);
    EXPECT_SOON(!isBright(from) && isBright(to));
    double before = 0;
    EXPECT_TRUE(await([&] { // A compositor shows the move in more than one frame.
        before = meanOf(desktop, Desktop::left);
        return holdsFor(200ms, [&] { return meanOf(desktop, Desktop::left) == before; });
    }));
    EXPECT_TRUE(!isBright(from) && isBright(to));
    EXPECT_FOR(1500ms, std::abs(meanOf(desktop, Desktop::left) - before) < 2)
        << "it feeds on itself: " << before << " is now " << meanOf(desktop, Desktop::left);
    visitor.hide();
    EXPECT_SOON(!isBright(from) && !isBright(to));
}

INSTANTIATE_TEST_SUITE_P(Desktop, Blur, testing::Bool(), [](const auto& each) {
    return each.param ? "WithACompositor" : "WithoutACompositor";
});
