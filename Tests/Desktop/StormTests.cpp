#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Paper.h"
#include "Harness/Soak.h"

#include <cmath>
#include <random>
#include <thread>

#include <gtest/gtest.h>

#include <xcb/shape.h>

using namespace Harness;

namespace {

Area anywhere(std::mt19937& random) {
    const auto upTo = [&](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    return {upTo(3000) - 100, upTo(1000) - 100, 1 + upTo(900), 1 + upTo(700)};
}

struct Storm : testing::Test {
    Storm() {
        agent.cover(); // What is made at the first time only is there from now on.
        agent.uncover();
        clear = holdings();
        agent.cover();
        expectLive();
        covered = holdings();
    }

    std::map<std::string, size_t> holdings() {
        auto held = desktop.screen.holdingsOf(agent.process().pid());
        held["pixmaps of all clients"] = desktop.screen.pixmaps();
        return held;
    }

    void expectLive() {
        for (const uint32_t colour : {black, white}) {
            paper.paint(colour);
            const double expected = colour == white ? 153 : 0;
            EXPECT_TRUE(await([&] {
                return std::abs(desktop.screen.grab(Desktop::left).mean() - expected) < 6;
            })) << "not live";
        }
    }

    void expectHoldings(const std::map<std::string, size_t>& before) {
        EXPECT_TRUE(await([&] { return holdings() == before; }));
        EXPECT_EQ(holdings(), before);
    }

    /// That what went by has left the program as it was, covered and then clear.
    void expectNoHarm() {
        ASSERT_FALSE(agent.process().status()) << agent.process().errors();
        EXPECT_TRUE(agent.isCovered());
        expectLive();
        expectHoldings(covered);
        paper.lower(); // It may have come above the status item by now.
        agent.uncover();
        expectHoldings(clear);
        EXPECT_EQ(agent.process().errors(), "");
    }

    Desktop desktop;
    Paper paper{desktop};
    Agent agent{desktop};
    std::map<std::string, size_t> clear;
    std::map<std::string, size_t> covered;
};

/// The end of a window that shows, as requests that reach the server together.
struct End {
    const char* name;
    void (*requests)(const XClient& client, xcb_window_t window, xcb_window_t neighbour);
};

void resize(const XClient& client, xcb_window_t window) {
    const uint32_t size[] = {700, 500};
    xcb_configure_window(client, window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
}

const End ends[] = {
    {"ResizedAndDestroyed",
     [](const XClient& client, xcb_window_t window, xcb_window_t) {
         resize(client, window);
         xcb_destroy_window(client, window);
     }},
    {"ResizedAndUnmapped",
     [](const XClient& client, xcb_window_t window, xcb_window_t) {
         resize(client, window);
         xcb_unmap_window(client, window);
     }},
    {"Unmapped", [](const XClient& client, xcb_window_t window,
                    xcb_window_t) { xcb_unmap_window(client, window); }},
    {"DestroyedAfterTheOrderChanged",
     [](const XClient& client, xcb_window_t window, xcb_window_t neighbour) {
         xcb_circulate_window(client, XCB_CIRCULATE_RAISE_LOWEST, client.root());
         xcb_map_window(client, neighbour);
         xcb_destroy_window(client, window);
     }},
    {"TakenIntoAnotherAndDestroyed",
     [](const XClient& client, xcb_window_t window, xcb_window_t neighbour) {
         xcb_reparent_window(client, window, neighbour, 0, 0);
         xcb_destroy_window(client, window);
     }},
    {"CutAndDestroyed",
     [](const XClient& client, xcb_window_t window, xcb_window_t) {
         const xcb_rectangle_t part = {10, 10, 100, 100};
         xcb_shape_rectangles(client, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, 0, window, 0, 0, 1,
                              &part);
         xcb_destroy_window(client, window);
     }},
};

struct StormOf : Storm, testing::WithParamInterface<End> {};

} // namespace

TEST_F(Storm, WindowsThatDieUnderTheLiveBlurDoItNoHarm) {
    std::mt19937 random(1);
    const auto start = Clock::now();
    int windows = 0;
    while (millisecondsSince(start) < rounds(4000, 60000)) {
        // Nothing is waited for in between, so a capture can fall anywhere.
        TestWindow brief(desktop.display(), anywhere(random));
        brief.paint(static_cast<uint32_t>(random()) & 0xFFFFFF);
        brief.show();
        if (random() % 2) brief.place(anywhere(random));
        if (random() % 2) brief.hide();
        if (random() % 2) brief.show();
        ++windows;
    }
    std::cout << windows << " windows\n";
    expectNoHarm();
}

TEST_P(StormOf, DoesNoHarm) {
    for (int round = 0; round < rounds(60, 300); ++round) {
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
        GetParam().requests(client, window.number(), neighbour.number());
        client.settle();
    }
    expectNoHarm();
}

INSTANTIATE_TEST_SUITE_P(Windows, StormOf, testing::ValuesIn(ends),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(StormOfWindows, TogglesAmongDyingWindows) {
    Desktop desktop;
    Agent agent(desktop);
    std::mt19937 random(2);
    for (int round = 0; round < rounds(10, 100); ++round) {
        std::vector<std::unique_ptr<TestWindow>> crowd;
        for (int i = 0; i < 20; ++i) {
            Area area = anywhere(random);
            area.height = std::min(area.height, 600);
            area.y = std::min(area.y, 300); // clear of the tray
            crowd.push_back(std::make_unique<TestWindow>(desktop.display(), area));
            crowd.back()->show();
        }
        agent.toggle();
        crowd.clear();
        ASSERT_TRUE(await([&] { return agent.isCovered(); })) << agent.process().errors();
        agent.uncover();
    }
}
