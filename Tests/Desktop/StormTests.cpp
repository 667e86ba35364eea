#include "Harness/Dice.h"
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/Soak.h"

#include <xcb/shape.h>

using namespace Harness;

namespace {

struct Storm : OnDesktop {
    Storm() {
        agent.emplace(desktop);
        agent->cover(); // What is made at the first time only is there from now on.
        agent->uncover();
        clear = holdings();
        agent->cover();
        paper.expectShownThrough(desktop.screen, Desktop::left);
        covered = holdings();
    }

    Area anywhere() {
        const auto upTo = [&](size_t limit) { return static_cast<int>(dice.below(limit)); };
        return {upTo(3000) - 100, upTo(900) - 100, 1 + upTo(900), 1 + upTo(700)};
    }

    std::map<std::string, size_t> holdings() {
        auto held = desktop.screen.holdingsOf(agent->process().pid());
        held["pixmaps of all clients"] = desktop.screen.pixmaps();
        return held;
    }
    void expectHoldings(const std::map<std::string, size_t>& before) {
        EXPECT_SOON(holdings() == before);
        EXPECT_EQ(holdings(), before);
    }

    /// That what went by has left the program as it was, covered and then clear.
    void expectNoHarm() {
        ASSERT_FALSE(agent->process().status()) << agent->process().errors();
        EXPECT_TRUE(agent->isCovered());
        paper.expectShownThrough(desktop.screen, Desktop::left);
        expectHoldings(covered);
        paper.lower(); // It may have come above the status item by now.
        agent->uncover();
        expectHoldings(clear);
        EXPECT_EQ(agent->process().errors(), "");
    }

    Dice dice;
    Paper paper{desktop};
    std::map<std::string, size_t> clear;
    std::map<std::string, size_t> covered;
};

} // namespace

// What happens to a window may reach the server together with its end.
TEST_F(Storm, WindowsThatDieUnderTheLiveBlurDoItNoHarm) {
    const auto start = Clock::now();
    while (millisecondsSince(start) < rounds(6000, 60000)) {
        TestWindow brief(desktop.display(), anywhere());
        const TestWindow neighbour(desktop.display(), anywhere());
        const XClient& client = brief.client();
        brief.paint(dice.number() & 0xFFFFFF);
        brief.show();
        // Through all of a frame's time, so that an end falls before, into or after a capture.
        const auto end = Clock::now() + dice.below(40) * 1ms;
        while (dice.below(3) && Clock::now() < end)
            brief.paint(dice.number() & 0xFFFFFF);
        const uint32_t size[] = {700, 500};
        const xcb_rectangle_t part = {10, 10, 100, 100};
        switch (dice.below(5)) {
        case 0:
            xcb_configure_window(client, brief.number(),
                                 XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
            break;
        case 1:
            xcb_circulate_window(client, XCB_CIRCULATE_RAISE_LOWEST, client.root());
            xcb_map_window(client, neighbour.number());
            break;
        case 2:
            xcb_reparent_window(client, brief.number(), neighbour.number(), 0, 0);
            break;
        case 3:
            xcb_shape_rectangles(client, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, 0, brief.number(),
                                 0, 0, 1, &part);
            break;
        default:
            brief.place(anywhere());
        }
        if (dice.below(2)) brief.hide();
    }
    expectNoHarm();
}
