#include "Harness/Dice.h"
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/Soak.h"

#include <cmath>
#include <thread>

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
        expectLive();
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

    void expectLive() {
        for (const uint32_t colour : {black, white}) {
            paper.paint(colour);
            const double expected = colour == white ? 153 : 0;
            EXPECT_SOON(std::abs(desktop.screen.grab(Desktop::left).mean() - expected) < 6);
        }
    }

    /// That what went by has left the program as it was, covered and then clear.
    void expectNoHarm() {
        ASSERT_FALSE(agent->process().status()) << agent->process().errors();
        EXPECT_TRUE(agent->isCovered());
        expectLive();
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

TEST_F(Storm, WindowsThatDieUnderTheLiveBlurDoItNoHarm) {
    const auto start = Clock::now();
    while (millisecondsSince(start) < rounds(4000, 60000)) {
        // Nothing is waited for in between, so a capture can fall anywhere.
        TestWindow brief(desktop.display(), anywhere());
        brief.paint(dice.number() & 0xFFFFFF);
        brief.show();
        if (dice.below(2)) brief.place(anywhere());
        if (dice.below(2)) brief.hide();
        if (dice.below(2)) brief.show();
    }
    expectNoHarm();
}

// What happens to a window that shows reaches the server together with its end.
TEST_F(Storm, NorDoTheirEndsInTheSameMoment) {
    using Request = std::function<void(const XClient&, xcb_window_t, xcb_window_t neighbour)>;
    const std::vector<Request> requests = {
        [](const XClient& client, xcb_window_t window, xcb_window_t) {
            const uint32_t size[] = {700, 500};
            xcb_configure_window(client, window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                                 size);
        },
        [](const XClient& client, xcb_window_t, xcb_window_t neighbour) {
            xcb_circulate_window(client, XCB_CIRCULATE_RAISE_LOWEST, client.root());
            xcb_map_window(client, neighbour);
        },
        [](const XClient& client, xcb_window_t window, xcb_window_t neighbour) {
            xcb_reparent_window(client, window, neighbour, 0, 0);
        },
        [](const XClient& client, xcb_window_t window, xcb_window_t) {
            const xcb_rectangle_t part = {10, 10, 100, 100};
            xcb_shape_rectangles(client, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, 0, window, 0, 0,
                                 1, &part);
        },
        [](const XClient&, xcb_window_t, xcb_window_t) {},
    };
    for (int round = 0; round < rounds(200, 1500); ++round) {
        TestWindow window(desktop.display(), {200, 200, 600, 400});
        const TestWindow neighbour(desktop.display(), {200, 200, 600, 400});
        const XClient& client = window.client();
        window.show();
        // Through all of a frame's time, so that ends fall before, into and after a capture.
        const auto end = Clock::now() + round * 1700us % 40ms;
        while (Clock::now() < end) {
            xcb_clear_area(client, 0, window.number(), 0, 0, 0, 0);
            client.settle();
            std::this_thread::sleep_for(500us);
        }
        dice.of(requests)(client, window.number(), neighbour.number());
        if (dice.below(2))
            xcb_destroy_window(client, window.number());
        else
            xcb_unmap_window(client, window.number());
        client.settle();
    }
    expectNoHarm();
}
