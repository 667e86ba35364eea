// A program that runs for weeks takes no more of anything than on its first day.
#include "Harness/OnDesktop.h"
#include "Harness/Soak.h"

using namespace Harness;

namespace {

struct LongLife : testing::Test {
    /// Does it for a while, and then many times more.
    void repeat(int times, const std::function<void()>& work) {
        const auto workTimes = [&](int count) {
            for (int i = 0; i < count && !HasFatalFailure(); ++i)
                work();
        };
        workTimes(times / 10 + 5);
        const auto before = holdings();
        const long memory = agent.process().memory();
        workTimes(times);
        EXPECT_SOON(exceeding(before).empty()) << exceeding(before);
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

    /// What it now holds more of than before, and how many. A few are what the toolkit keeps for
    /// the next time, such as cursors; a loss grows with every round.
    std::string exceeding(const std::map<std::string, size_t>& before) {
        constexpr size_t few = 5;
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
