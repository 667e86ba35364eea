// A program that runs for weeks takes no more of anything than on its first day.
#include "Harness/Dice.h"
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/Soak.h"

#include <xcb/shape.h>

using namespace Harness;

namespace {

struct LongLife : testing::Test {
    /// Does it for a while, and then many times more. A few things more are what the toolkit keeps
    /// for the next time, such as cursors; a loss grows with every round.
    void repeat(int times, const std::function<void()>& work, size_t few = 5) {
        const auto workTimes = [&](int count) {
            for (int i = 0; i < count && !HasFatalFailure(); ++i)
                work();
        };
        workTimes(times / 10 + 5);
        const auto before = holdings();
        const long memory = agent.process().memory();
        workTimes(times);
        EXPECT_SOON(exceeding(before, few).empty()) << exceeding(before, few);
        const long more = agent.process().memory() - memory;
        std::cout << times << " times: " << more << " of " << memory << " KiB more\n";
        // Another program may be a sanitized one, which keeps what was freed.
        if (!std::getenv("NIMBREL_LITE")) {
            EXPECT_LT(more, memory / 20);
        }
        EXPECT_EQ(agent.process().errors(), "");
    }

    std::map<std::string, size_t> holdings() {
        auto held = desktop.screen.holdingsOf(agent.process().pid());
        held["open files"] = agent.process().openFiles();
        held["threads"] = static_cast<size_t>(agent.process().threads());
        return held;
    }

    /// What it now holds more of than before, and how many.
    std::string exceeding(const std::map<std::string, size_t>& before, size_t few) {
        std::string text;
        for (const auto& [name, count] : holdings())
            if (const auto former = before.find(name);
                count > (former == before.end() ? 0 : former->second) + few)
                text += name + " " + std::to_string(count) + "\n";
        return text;
    }

    Desktop desktop;
    Agent agent{desktop};
};

} // namespace

TEST_F(LongLife, TogglesCostNothing) {
    repeat(rounds(50, 10000), [this] {
        agent.cover();
        agent.uncover();
    });
}

TEST_F(LongLife, MenusAndWindowsCostNothing) {
    agent.cover();
    repeat(rounds(15, 200), [this] {
        agent.choose(Row::summit);
        ASSERT_TRUE(await([&] {
            const auto open = agent.panels();
            return open.size() == 1 && desktop.screen.focus() == open[0].number;
        }));
        desktop.input.strike(escapeKey);
        ASSERT_SOON(agent.panels().empty());
    });
}

TEST_F(LongLife, ChangesOfTheMonitorsCostNothing) {
    agent.cover();
    Area another = Desktop::right; // Each time of another size, so that nothing of it serves again.
    repeat(rounds(15, 200), [&] {
        desktop.server->xrandr({"--delmonitor", "B"});
        ASSERT_SOON(agent.buttons().size() == 1 && agent.isCovered());
        another.width -= 4;
        desktop.server->setMonitor("B", another);
        ASSERT_SOON(agent.buttons().size() == 2 && agent.isCovered());
    });
}

// What happens to a window may reach the server together with its end.
TEST_F(LongLife, WindowsThatDieUnderTheLiveBlurCostNothing) {
    Dice dice;
    Paper paper(desktop);
    const auto anywhere = [&] {
        const auto upTo = [&](size_t limit) { return static_cast<int>(dice.below(limit)); };
        return Area{upTo(3000) - 100, upTo(900) - 100, 1 + upTo(900), 1 + upTo(700)};
    };
    agent.cover();
    const auto liveAndDie = [&] {
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
    };
    repeat(rounds(1500, 20000), liveAndDie, 0);
    EXPECT_TRUE(agent.isCovered());
    paper.expectShownThrough(desktop.screen, Desktop::left);
}
