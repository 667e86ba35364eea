#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Paper.h"
#include "Harness/Soak.h"

#include <atomic>
#include <csignal>
#include <random>
#include <thread>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

enum class Sight { Clear, Covered, Bare };

// Four rows of a monitor stand for the whole of it, so that many samples fit between two frames.
Sight look(const Screen& screen, const Area& monitor) {
    Sight result = Sight::Covered;
    for (int quarter = 0; quarter < 4; ++quarter) {
        const Picture row =
            screen.grab({monitor.x, monitor.y + quarter * monitor.height / 4, monitor.width, 1});
        if (row.count(white) > 0) return Sight::Clear;
        // White under dark glass is a grey of 153: whatever is darker was never a blurred picture.
        if (row.mean() < 120) result = Sight::Bare;
    }
    return result;
}

} // namespace

TEST(Flash, NothingReadableOrBareEverShowsOnceAMonitorIsCovered) {
    Desktop desktop;
    Paper paper(desktop);
    Agent agent(desktop);
    const std::vector<Area> monitors = desktop.screen.monitors();
    size_t samples = 0;
    const auto start = Clock::now();

    for (int round = 0; round < rounds(20, 200); ++round) {
        std::vector<bool> seenCovered(monitors.size(), false);
        agent.toggle();
        const auto end = Clock::now() + 20s;
        auto stop = end;
        while (Clock::now() < stop) {
            for (size_t i = 0; i < monitors.size(); ++i) {
                const Sight sight = look(desktop.screen, monitors[i]);
                ++samples;
                ASSERT_NE(sight, Sight::Bare) << "monitor " << i << " in round " << round;
                ASSERT_FALSE(seenCovered[i] && sight == Sight::Clear) << "monitor " << i;
                seenCovered[i] = sight == Sight::Covered;
            }
            const bool all =
                std::find(seenCovered.begin(), seenCovered.end(), false) == seenCovered.end();
            if (all && stop == end) stop = Clock::now() + 200ms;
        }
        ASSERT_NE(stop, end) << "not covered";
        agent.uncover();
    }
    std::cout << samples << " samples, "
              << static_cast<double>(samples) * 1000 / millisecondsSince(start) << " a second\n";
}

TEST(Flash, NothingReadableShowsWhateverComesAndGoes) {
    Desktop desktop;
    Paper paper(desktop);
    Agent agent(desktop);
    agent.cover();
    std::mt19937 random(6);
    std::atomic<bool> ends = false;
    size_t looks = 0;
    size_t clear = 0;
    std::thread eye([&] {
        const Screen screen(desktop.display());
        for (; !ends; ++looks)
            for (const Area& monitor : {Desktop::left, Desktop::right})
                clear += look(screen, monitor) == Sight::Clear;
    });

    for (int round = 0; round < rounds(6, 60); ++round) {
        const auto kind = random() % 3;
        if (kind == 0) {
            TestWindow popup(desktop.display(), {700, 300, 200, 100});
            popup.show();
            popup.raise();
            std::this_thread::sleep_for(30ms);
        } else if (kind == 1) {
            // Into the dead zone, so that the others have to stay as they are.
            desktop.server->xrandr({"--setmonitor", "C", "400/100x56/20+1920+1024", "none"});
            EXPECT_SOON(agent.isCovered()) << round;
            desktop.server->xrandr({"--delmonitor", "C"});
        } else {
            const auto compositor = desktop.startCompositor();
            std::this_thread::sleep_for(100ms);
            compositor->send(random() % 2 ? SIGTERM : SIGKILL);
            EXPECT_TRUE(compositor->awaitEnd()) << round;
        }
        EXPECT_SOON(agent.isCovered()) << round;
    }
    ends = true;
    eye.join();
    std::cout << looks << " looks\n";
    EXPECT_GT(looks, 100U);
    EXPECT_EQ(clear, 0U);
}
