// Monitors that come, go, move and change their sizes.
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/Soak.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>

using namespace Harness;

namespace {

constexpr int brightestCovered = 160;

using Change = std::vector<std::string>; ///< xrandr's arguments.

/// Each area once, without those that lie within another.
std::vector<Area> distinct(const std::vector<Area>& monitors) {
    std::vector<Area> result;
    for (const Area& each : monitors) {
        const bool isWithin = std::ranges::any_of(
            monitors, [&](const Area& other) { return other != each && other.contains(each); });
        if (!isWithin && std::ranges::find(result, each) == result.end()) result.push_back(each);
    }
    return result;
}

std::vector<Area> areasOf(const std::vector<ScreenWindow>& windows) {
    std::vector<Area> areas;
    for (const ScreenWindow& window : windows)
        areas.push_back(window.area);
    return areas;
}

/// A white desktop, the program on it, and dice.
struct WhiteDesktop {
    explicit WhiteDesktop(std::unique_ptr<XServer> server = Desktop::twoMonitors())
        : desktop(std::move(server)), paper(desktop), agent(desktop) {}

    int upTo(unsigned limit) { return static_cast<int>(random() % limit); }

    bool isDarkEverywhere() const {
        return std::ranges::all_of(desktop.screen.monitors(), [&](const Area& monitor) {
            return desktop.screen.grabWithoutButtons(monitor).brightest() <= brightestCovered;
        });
    }

    /// One cover, and one button, on each distinct monitor, and no other.
    bool isEachCoveredOnce() const {
        const auto monitors = distinct(desktop.screen.monitors());
        return std::ranges::is_permutation(areasOf(agent.visibleCovers()), monitors) &&
               agent.buttons().size() == monitors.size();
    }
    bool isCoveredEverywhere() const { return isEachCoveredOnce() && isDarkEverywhere(); }

    /// What the program has at the server, once it neither makes nor drops anything any more.
    std::map<std::string, size_t> holdings() {
        std::map<std::string, size_t> held;
        const auto isSteady = [&] {
            auto now = desktop.screen.holdingsOf(agent.process().pid());
            now.erase("CURSOR"); // The toolkit keeps those it has once shown.
            return std::exchange(held, now) == now;
        };
        EXPECT_SOON(holdsFor(300ms, isSteady));
        return held;
    }
    /// The same after a frame of the live blur, with all that one takes.
    std::map<std::string, size_t> holdingsWhileLive() {
        for (const uint32_t colour : {black, white}) {
            paper.paint(colour);
            EXPECT_SOON((desktop.screen.grab({300, 300, 200, 200}).mean() > 100) ==
                        (colour == white));
        }
        return holdings();
    }

    Desktop desktop;
    Paper paper;
    Agent agent;
    std::mt19937 random{4};
};

struct Monitors : testing::Test, WhiteDesktop {};

/// Real outputs: they are switched, moved and resized, and the screen with them.
struct Outputs : testing::Test {
    Outputs() {
        auto server = XServer::outputs();
        if (!server) return;
        for (const char* output : {"DUMMY0", "DUMMY1", "DUMMY2"})
            for (const char* mode : {"1024x768", "640x480"})
                server->xrandr({"--addmode", output, mode});
        server->xrandr({"--output", "DUMMY1", "--mode", "1024x768", "--right-of", "DUMMY0"});
        on.emplace(std::move(server));
        on->paper.place({0, 0, 4096, 2160});
    }
    void SetUp() override {
        if (!on) GTEST_SKIP() << "no X server with several outputs can start here";
    }

    std::optional<WhiteDesktop> on;
};

} // namespace

TEST_F(Monitors, AreCoveredThroughRandomChanges) {
    desktop.server->xrandr({"--delmonitor", "B"});
    desktop.server->xrandr({"--delmonitor", "A"});
    desktop.server->setMonitor("A", {50, 60, 700, 900}, "screen");
    agent.cover();
    agent.uncover();
    const auto clear = holdings();
    agent.cover();
    const auto covered = holdingsWhileLive();
    std::vector<std::string> names;

    // Each keeps to a quarter of the screen: one that another contains is the same monitor twice.
    for (int round = 0; round < rounds(25, 200); ++round) {
        SCOPED_TRACE(round);
        const bool whileClear = round % 5 == 4;
        if (whileClear) agent.uncover();
        // Some come one after the other, faster than they are followed.
        for (int changes = round % 7 == 0 ? 5 : 1; changes > 0; --changes) {
            const int quarter = 1 + upTo(3);
            const std::string name(1, static_cast<char>('C' + quarter));
            if (std::erase(names, name) > 0) {
                desktop.server->xrandr({"--delmonitor", name});
            } else {
                const Area area = {quarter * 800 + upTo(200), upTo(300), 200 + upTo(400),
                                   200 + upTo(500)};
                desktop.server->setMonitor(name, area);
                names.push_back(name);
            }
        }
        if (whileClear) {
            EXPECT_FOR(200ms, agent.visibleCovers().empty());
            agent.toggle();
        }
        ASSERT_SOON(isCoveredEverywhere())
            << agent.visibleCovers().size() << " covers, " << agent.buttons().size()
            << " buttons on " << desktop.screen.monitors().size();
        EXPECT_SOON(agent.covers().size() == desktop.screen.monitors().size())
            << "a window is left behind";
    }

    for (const std::string& name : names)
        desktop.server->xrandr({"--delmonitor", name});
    ASSERT_SOON(isEachCoveredOnce());
    EXPECT_EQ(holdingsWhileLive(), covered);
    agent.uncover();
    EXPECT_EQ(holdings(), clear);
    EXPECT_EQ(agent.process().errors(), "");
}

TEST_F(Outputs, AreCoveredThroughRandomChanges) {
    const auto& [desktop, agent] = std::tie(on->desktop, on->agent);
    const auto pick = [&](const std::vector<std::string>& from) {
        return from[static_cast<size_t>(on->upTo(static_cast<unsigned>(from.size())))];
    };
    const std::vector<std::string> outputs = {"DUMMY0", "DUMMY1", "DUMMY2"};
    agent.cover();
    size_t allOff = 0;
    for (int round = 0; round < rounds(20, 100); ++round) {
        const std::string output = pick(outputs);
        // Beside another, over a part of it, in the same place, or gone: all of them at times.
        const std::string mode = pick({"1024x768", "640x480"});
        const auto place = std::to_string(on->upTo(2000)) + 'x' + std::to_string(on->upTo(1000));
        Change change = {"--output", output, "--mode", mode, "--pos", place};
        if (const auto other = pick(outputs); other != output && on->upTo(2))
            change = {
                "--output", output, "--mode", mode, pick({"--right-of", "--below", "--same-as"}),
                other};
        if (on->upTo(2)) change = {"--output", output, "--off"};
        if (on->upTo(3) == 0) change.emplace_back("--primary");
        // In the middle of a drag, too.
        const auto buttons = agent.buttons();
        const bool drags = !buttons.empty() && on->upTo(2);
        if (drags) {
            desktop.input.move(buttons.back().area.middle());
            desktop.input.press(1);
            desktop.input.move(on->upTo(1000), on->upTo(700));
        }
        desktop.server->xrandr(change);
        desktop.input.move(300, 300);
        if (drags) desktop.input.release(1);
        ASSERT_SOON(on->isCoveredEverywhere())
            << "change " << round << ": " << testing::PrintToString(change);
        allOff += desktop.screen.monitors().empty();
    }
    EXPECT_GT(allOff, 0U);
    EXPECT_EQ(agent.process().errors(), "");
}

TEST_F(Outputs, AreAsTheyWereWhenAllWereGone) {
    const Desktop& desktop = on->desktop;
    Agent& agent = on->agent;
    ASSERT_SOON(agent.buttons().size() == 2);
    desktop.input.drag(agent.buttons()[0].area, {{30, 150}, {30, 200}, {30, 250}});
    ASSERT_SOON(agent.buttons()[0].area.x == 6); // At the edge.
    agent.cover();
    const auto spots = areasOf(agent.buttons());
    const auto monitors = desktop.screen.monitors();

    for (int round = 0; round < rounds(5, 50); ++round) {
        SCOPED_TRACE(round);
        desktop.server->xrandr({"--output", "DUMMY0", "--off", "--output", "DUMMY1", "--off"});
        ASSERT_TRUE(desktop.screen.monitors().empty());
        EXPECT_SOON(on->isEachCoveredOnce());
        on->paper.paint(round % 2 ? black : white);
        desktop.server->xrandr({"--output", "DUMMY0", "--mode", "1024x768", "--output", "DUMMY1",
                                "--mode", "1024x768", "--right-of", "DUMMY0"});
        ASSERT_EQ(desktop.screen.monitors(), monitors);
        EXPECT_SOON(on->isEachCoveredOnce() && areasOf(agent.buttons()) == spots)
            << testing::PrintToString(areasOf(agent.buttons()));
        for (const Area& monitor : monitors)
            EXPECT_TRUE(await([&] {
                const Area part = {monitor.x + 300, monitor.y + 200, 300, 300};
                return std::abs(desktop.screen.grab(part).mean() - (round % 2 ? 0 : 153)) < 6;
            }));
    }
    EXPECT_EQ(agent.process().errors(), "");
}
