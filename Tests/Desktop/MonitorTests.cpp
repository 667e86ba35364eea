// Monitors that come, go, move and change their sizes.
#include "Harness/Dice.h"
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/Soak.h"

#include <algorithm>

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

/// A desktop of one colour, the program on it, and dice.
struct PlainDesktop {
    explicit PlainDesktop(std::unique_ptr<XServer> server = Desktop::twoMonitors())
        : desktop(std::move(server)), paper(desktop), agent(desktop) {}

    int upTo(size_t limit) { return static_cast<int>(dice.below(limit)); }

    /// One cover, and one button, on each distinct monitor, and no other: and each cover shows what
    /// lies below as it is by now.
    bool isCoveredEverywhere() const {
        const auto monitors = distinct(desktop.screen.monitors());
        // Of all at once, for a button may reach into a monitor that lies over a part of its own.
        const Picture all = desktop.screen.grabWithoutButtons(desktop.screen.bounds());
        return std::ranges::is_permutation(areasOf(agent.visibleCovers()), monitors) &&
               agent.buttons().size() == monitors.size() &&
               std::ranges::all_of(monitors, [&](const Area& monitor) {
                   const Picture picture = all.cut(monitor);
                   return picture.brightest() <= brightestCovered &&
                          (picture.mean() > 100) == (colour == white);
               });
    }
    /// What lies below.
    void changePaper() { paper.paint(colour = white - colour); }

    Desktop desktop;
    Paper paper;
    Agent agent;
    Dice dice;
    uint32_t colour = white;
};

} // namespace

TEST(Monitors, AreCoveredThroughRandomChanges) {
    PlainDesktop on;
    auto& desktop = on.desktop;
    auto& agent = on.agent;
    desktop.server->xrandr({"--delmonitor", "B"});
    desktop.server->xrandr({"--delmonitor", "A"});
    desktop.server->setMonitor("A", {50, 60, 700, 900}, "screen");
    agent.cover();
    std::vector<std::string> names;

    // Each keeps to a quarter of the screen: one that another contains is the same monitor twice.
    for (int round = 0; round < rounds(25, 200); ++round) {
        SCOPED_TRACE(round);
        const bool whileClear = round % 5 == 4;
        if (whileClear) agent.uncover();
        // Some come one after the other, faster than they are followed.
        for (int changes = round % 7 == 0 ? 5 : 1; changes > 0; --changes) {
            const int quarter = 1 + on.upTo(3);
            const std::string name(1, static_cast<char>('C' + quarter));
            if (std::erase(names, name) > 0) {
                desktop.server->xrandr({"--delmonitor", name});
            } else {
                const Area area = {quarter * 800 + on.upTo(200), on.upTo(300), 200 + on.upTo(400),
                                   200 + on.upTo(500)};
                desktop.server->setMonitor(name, area);
                names.push_back(name);
            }
        }
        if (whileClear) {
            EXPECT_FOR(200ms, agent.visibleCovers().empty());
            agent.toggle();
        }
        on.changePaper();
        ASSERT_SOON(on.isCoveredEverywhere())
            << agent.visibleCovers().size() << " covers, " << agent.buttons().size()
            << " buttons on " << desktop.screen.monitors().size();
        EXPECT_SOON(agent.covers().size() == desktop.screen.monitors().size())
            << "a window is left behind";
    }
    EXPECT_EQ(agent.process().errors(), "");
}

// Real outputs: they are switched, moved and resized, and the screen with them.
TEST(Outputs, AreCoveredThroughRandomChanges) {
    auto server = XServer::outputs();
    if (!server) GTEST_SKIP() << "no X server with several outputs can start here";
    const std::vector<std::string> outputs = {"DUMMY0", "DUMMY1", "DUMMY2"};
    const std::vector<std::string> modes = {"1024x768", "640x480"};
    const std::vector<std::string> places = {"--right-of", "--below", "--same-as"};
    for (const auto& output : outputs)
        for (const auto& mode : modes)
            server->xrandr({"--addmode", output, mode});
    server->xrandr({"--output", "DUMMY1", "--mode", "1024x768", "--right-of", "DUMMY0"});
    server->xrandr({"--output", "DUMMY2", "--mode", "640x480", "--same-as", "DUMMY0"});
    PlainDesktop on(std::move(server));
    auto& desktop = on.desktop;
    auto& agent = on.agent;
    on.paper.place({0, 0, 4096, 2160});
    agent.toggle();
    ASSERT_SOON(on.isCoveredEverywhere());
    size_t allOff = 0;
    for (int round = 0; round < rounds(40, 150); ++round) {
        const auto& output = on.dice.of(outputs);
        // Beside another, over a part of it, in the same place, or gone: all of them at times.
        const auto place = std::to_string(on.upTo(2000)) + 'x' + std::to_string(on.upTo(1000));
        Change change = {"--output", output, "--mode", on.dice.of(modes), "--pos", place};
        if (const auto& other = on.dice.of(outputs); other != output && on.upTo(2))
            change = {"--output", output, "--mode", on.dice.of(modes), on.dice.of(places), other};
        if (on.upTo(2)) change = {"--output", output, "--off"};
        if (on.upTo(3) == 0) change.emplace_back("--primary");
        // In the middle of a drag, too.
        const auto buttons = agent.buttons();
        const bool drags = !buttons.empty() && on.upTo(2);
        if (drags) {
            desktop.input.move(buttons.back().area.middle());
            desktop.input.press(1);
            desktop.input.move(on.upTo(1000), on.upTo(700));
        }
        desktop.server->xrandr(change);
        desktop.input.move(300, 300);
        if (drags) desktop.input.release(1);
        on.changePaper();
        ASSERT_SOON(on.isCoveredEverywhere())
            << "change " << round << ": " << testing::PrintToString(change);
        allOff += desktop.screen.monitors().empty();
    }
    EXPECT_GT(allOff, 0U);
    EXPECT_EQ(agent.process().errors(), "");
}
