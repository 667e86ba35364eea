#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Paper.h"
#include "Harness/Soak.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

Area anywhere(std::mt19937& random) {
    const auto upTo = [&](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    return {upTo(3000) - 100, upTo(1000) - 100, 1 + upTo(900), 1 + upTo(700)};
}

} // namespace

TEST(Storm, WindowsThatDieUnderTheLiveBlurDoItNoHarm) {
    Desktop desktop;
    Paper paper(desktop);
    Agent agent(desktop);
    agent.cover();
    std::mt19937 random(1);

    const size_t pixmapsBefore = desktop.screen.pixmaps();
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
    ASSERT_FALSE(agent.process().status()) << agent.process().errors();
    EXPECT_TRUE(agent.isCovered());
    for (const uint32_t colour : {black, white}) {
        paper.paint(colour);
        const double expected = colour == white ? 153 : 0;
        EXPECT_TRUE(await([&] {
            return std::abs(desktop.screen.grab(Desktop::left).mean() - expected) < 6;
        })) << "no longer live";
    }
    EXPECT_TRUE(await([&] { return desktop.screen.pixmaps() <= pixmapsBefore; }))
        << desktop.screen.pixmaps() << " pixmaps after " << pixmapsBefore;
    EXPECT_EQ(agent.process().errors(), "");
}

TEST(Storm, TogglesAmongDyingWindows) {
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
