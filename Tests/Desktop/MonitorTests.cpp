#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Soak.h"
#include "Harness/TestWindow.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

constexpr int brightestCovered = 160;

bool isDarkEverywhere(const Desktop& desktop) {
    for (const Area& monitor : desktop.screen.monitors())
        if (desktop.screen.grabWithoutButtons(monitor).brightest() > brightestCovered) return false;
    return true;
}

bool contains(const Area& outer, const Area& inner) {
    return outer.x <= inner.x && outer.right() >= inner.right() && outer.y <= inner.y &&
           outer.bottom() >= inner.bottom();
}

/// Each area once, without those that lie within another.
std::vector<Area> distinct(const std::vector<Area>& monitors) {
    std::vector<Area> result;
    for (const Area& each : monitors) {
        const bool isWithin = std::ranges::any_of(
            monitors, [&](const Area& other) { return other != each && contains(other, each); });
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

/// One cover, and one button, on each distinct monitor, and no other.
bool isEachCoveredOnce(const Desktop& desktop, const Agent& agent) {
    const auto monitors = distinct(desktop.screen.monitors());
    const auto covers = areasOf(agent.visibleCovers());
    return std::ranges::is_permutation(covers, monitors) &&
           agent.buttons().size() == monitors.size();
}

void layPaper(const Desktop& desktop, TestWindow& paper) {
    paper.place(desktop.screen.bounds());
    paper.paint(white);
    paper.lower();
    paper.show();
}

using Change = std::vector<std::string>;

struct Step {
    const char* name;
    std::vector<Change> changes; ///< xrandr's arguments, one call after the other
};

// A server's monitors as its clients name them: no output has to come or go for these.
const std::vector<Step> monitorSteps = {
    {"one more", {{"--setmonitor", "C", "400/100x56/20+1920+1024", "none"}}},
    {"one less", {{"--delmonitor", "C"}}},
    {"smaller", {{"--delmonitor", "B"}, {"--setmonitor", "B", "1024/270x768/200+1920+0", "none"}}},
    {"moved", {{"--delmonitor", "B"}, {"--setmonitor", "B", "1024/270x768/200+2100+300", "none"}}},
    {"only one", {{"--delmonitor", "B"}}},
    {"the server's own", {{"--delmonitor", "A"}}},
    {"two again",
     {{"--setmonitor", "A", "1920/500x1080/290+0+0", "screen"},
      {"--setmonitor", "B", "1280/340x1024/270+1920+0", "none"}}},
};

// Real outputs: they are switched, moved and resized, and the screen with them.
const std::vector<Step> outputSteps = {
    {"second on",
     {{"--addmode", "DUMMY1", "1024x768"},
      {"--output", "DUMMY1", "--mode", "1024x768", "--right-of", "DUMMY0"}}},
    {"second below", {{"--output", "DUMMY1", "--below", "DUMMY0"}}},
    {"second first", {{"--output", "DUMMY0", "--right-of", "DUMMY1", "--primary"}}},
    {"smaller", {{"--addmode", "DUMMY1", "640x480"}, {"--output", "DUMMY1", "--mode", "640x480"}}},
    {"larger", {{"--output", "DUMMY1", "--mode", "1024x768"}}},
    {"first off", {{"--output", "DUMMY0", "--off"}}},
    {"first back", {{"--output", "DUMMY0", "--auto", "--left-of", "DUMMY1"}}},
    {"second off", {{"--output", "DUMMY1", "--off"}}},
};

} // namespace

TEST(Monitors, AreCoveredThroughEveryChangeWhileOn) {
    Desktop desktop;
    TestWindow paper(desktop.display(), desktop.screen.bounds());
    layPaper(desktop, paper);
    Agent agent(desktop);
    agent.cover();
    for (const Step& step : monitorSteps) {
        for (const Change& change : step.changes)
            desktop.server->xrandr(change);
        EXPECT_TRUE(await([&] { return agent.isCovered() && isDarkEverywhere(desktop); }))
            << step.name;
        EXPECT_TRUE(await([&] {
            return agent.covers().size() == desktop.screen.monitors().size();
        })) << step.name
            << " leaves a window behind";
    }
}

TEST(Monitors, StayClearThroughEveryChangeWhileOff) {
    Desktop desktop;
    TestWindow paper(desktop.display(), desktop.screen.bounds());
    layPaper(desktop, paper);
    Agent agent(desktop);
    for (const Step& step : monitorSteps) {
        for (const Change& change : step.changes)
            desktop.server->xrandr(change);
        EXPECT_TRUE(holdsFor(200ms, [&] { return agent.visibleCovers().empty(); })) << step.name;
        agent.cover();
        EXPECT_TRUE(isDarkEverywhere(desktop)) << step.name;
        agent.uncover();
    }
}

TEST(Monitors, SurviveFiftyChangesInARow) {
    Desktop desktop;
    Agent agent(desktop);
    agent.cover();
    for (int i = 0; i < 50; ++i) {
        const std::string size = std::to_string(640 + i * 13) + "/300x" +
                                 std::to_string(480 + i * 7) + "/200+1920+" + std::to_string(i);
        desktop.server->xrandr({"--delmonitor", "B"});
        desktop.server->xrandr({"--setmonitor", "B", size, "none"});
    }
    EXPECT_TRUE(await([&] { return agent.isCovered(); }));
    EXPECT_TRUE(await([&] { return agent.covers().size() == 2; }));
}

TEST(Monitors, AreCoveredThroughRandomChanges) {
    Desktop desktop;
    TestWindow paper(desktop.display(), desktop.screen.bounds());
    layPaper(desktop, paper);
    Agent agent(desktop);
    desktop.server->xrandr({"--delmonitor", "B"});
    desktop.server->xrandr({"--delmonitor", "A"});
    desktop.server->xrandr({"--setmonitor", "A", "700/300x900/200+50+60", "screen"});
    const auto holdings = [&] {
        auto held = desktop.screen.holdingsOf(agent.process().pid());
        held.erase("CURSOR"); // The toolkit keeps those it has once shown.
        return held;
    };
    agent.cover();
    agent.uncover();
    const auto clear = holdings();
    agent.cover();
    const auto covered = holdings();
    std::mt19937 random(4);
    const auto upTo = [&](unsigned limit) { return static_cast<int>(random() % limit); };
    std::vector<std::string> names;

    // Each keeps to a quarter of the screen: one that another contains is the same monitor twice.
    for (int round = 0; round < rounds(15, 200); ++round) {
        const int quarter = 1 + upTo(3);
        const std::string name(1, static_cast<char>('C' + quarter));
        if (std::erase(names, name) > 0) {
            desktop.server->xrandr({"--delmonitor", name});
        } else {
            std::ostringstream area;
            area << 200 + upTo(400) << "/300x" << 200 + upTo(500) << "/200+"
                 << quarter * 800 + upTo(200) << "+" << upTo(300);
            desktop.server->xrandr({"--setmonitor", name, area.str(), "none"});
            names.push_back(name);
        }
        ASSERT_TRUE(await([&] { return agent.isCovered() && isDarkEverywhere(desktop); }))
            << "change " << round << ": " << agent.visibleCovers().size() << " covers, "
            << (isDarkEverywhere(desktop) ? "dark" : "bright");
        const auto monitors = desktop.screen.monitors().size();
        ASSERT_TRUE(await([&] { return agent.buttons().size() == monitors; }))
            << "change " << round << ": " << agent.buttons().size() << " buttons on " << monitors;
    }

    for (const std::string& name : names)
        desktop.server->xrandr({"--delmonitor", name});
    ASSERT_TRUE(await([&] { return isEachCoveredOnce(desktop, agent); }));
    paper.paint(white); // A frame, with all that one takes.
    EXPECT_TRUE(await([&] { return holdings() == covered; }));
    EXPECT_EQ(holdings(), covered);
    agent.uncover();
    EXPECT_TRUE(await([&] { return holdings() == clear; }));
    EXPECT_EQ(holdings(), clear);
    EXPECT_EQ(agent.process().errors(), "");
}

TEST(Monitors, AreCoveredHoweverManyAndLarge) {
    using Layout = std::vector<Area>;
    Layout sixteen;
    for (int i = 0; i < 16; ++i)
        sixteen.push_back({i % 4 * 1920, i / 4 * 1080, 1920, 1080});
    const std::vector<std::pair<const char*, Layout>> layouts = {
        {"one of 8K", {{0, 0, 7680, 4320}}},
        {"sixteen", sixteen},
        {"an L", {{0, 0, 1280, 1024}, {0, 1024, 1280, 1024}, {1280, 1024, 1920, 1080}}},
        {"three that overlap", {{0, 0, 1920, 1080}, {960, 540, 1920, 1080}, {1700, 0, 800, 2000}}},
        {"on their sides", {{0, 0, 1080, 1920}, {1080, 300, 1024, 1280}}},
    };
    Desktop desktop(XServer::framebuffer({"-screen", "0", "7680x4320x24"}));
    TestWindow paper(desktop.display(), desktop.screen.bounds());
    layPaper(desktop, paper);
    Agent agent(desktop);
    agent.cover();
    size_t known = 0;
    for (const auto& [name, layout] : layouts) {
        for (; known > 0; --known)
            desktop.server->xrandr({"--delmonitor", 'M' + std::to_string(known - 1)});
        for (const Area& area : layout) {
            std::ostringstream place;
            place << area.width << "/500x" << area.height << "/300+" << area.x << "+" << area.y;
            desktop.server->xrandr({"--setmonitor", 'M' + std::to_string(known), place.str(),
                                    known == 0 ? "screen" : "none"});
            ++known;
        }
        EXPECT_TRUE(await([&] { return agent.isCovered(); })) << name;
        EXPECT_TRUE(await([&] { return agent.buttons().size() == known; })) << name;
        EXPECT_TRUE(await([&] { return isDarkEverywhere(desktop); })) << name;
    }
    EXPECT_EQ(agent.process().errors(), "");
}

TEST(Outputs, AreCoveredThroughEveryChangeWhileOn) {
    auto server = XServer::outputs();
    if (!server) GTEST_SKIP() << "no X server with several outputs can start here";
    Desktop desktop(std::move(server));
    TestWindow paper(desktop.display(), desktop.screen.bounds());
    layPaper(desktop, paper);
    Agent agent(desktop);
    agent.cover();
    for (const Step& step : outputSteps) {
        for (const Change& change : step.changes)
            desktop.server->xrandr(change);
        layPaper(desktop, paper);
        EXPECT_TRUE(await([&] { return agent.isCovered() && isDarkEverywhere(desktop); }))
            << step.name;
    }
}

TEST(Outputs, AreCoveredThroughRandomChanges) {
    auto server = XServer::outputs();
    if (!server) GTEST_SKIP() << "no X server with several outputs can start here";
    Desktop desktop(std::move(server));
    TestWindow paper(desktop.display(), {0, 0, 4096, 2160});
    paper.paint(white);
    paper.lower();
    paper.show();
    const std::vector<std::string> outputs = {"DUMMY0", "DUMMY1", "DUMMY2"};
    const std::vector<std::string> modes = {"1024x768", "640x480"};
    for (const std::string& output : outputs)
        for (const std::string& mode : modes)
            desktop.server->xrandr({"--addmode", output, mode});
    Agent agent(desktop);
    agent.cover();
    std::mt19937 random(5);
    const auto pick = [&](const std::vector<std::string>& from) {
        return from[random() % from.size()];
    };
    const auto place = [&] {
        return std::to_string(random() % 2000) + 'x' + std::to_string(random() % 1000);
    };
    size_t allOff = 0;
    for (int round = 0; round < rounds(15, 100); ++round) {
        const std::string output = pick(outputs);
        // Beside another, over a part of it, in the same place, or gone: all of them at times.
        Change change = {"--output", output, "--mode", pick(modes), "--pos", place()};
        if (const auto other = pick(outputs); other != output && random() % 2)
            change = {"--output",
                      output,
                      "--mode",
                      pick(modes),
                      pick({"--right-of", "--below", "--same-as"}),
                      other};
        if (random() % 2) change = {"--output", output, "--off"};
        if (random() % 3 == 0) change.emplace_back("--primary");
        desktop.server->xrandr(change);
        ASSERT_TRUE(await([&] {
            return isDarkEverywhere(desktop) && isEachCoveredOnce(desktop, agent);
        })) << "change "
            << round << ": " << testing::PrintToString(change);
        allOff += desktop.screen.monitors().empty();
    }
    EXPECT_GT(allOff, 0U);
    EXPECT_EQ(agent.process().errors(), "");
}

TEST(Outputs, AreAsTheyWereWhenAllWereGone) {
    auto server = XServer::outputs();
    if (!server) GTEST_SKIP() << "no X server with several outputs can start here";
    Desktop desktop(std::move(server));
    for (const Change& change : outputSteps[0].changes)
        desktop.server->xrandr(change);
    TestWindow paper(desktop.display(), {0, 0, 4096, 2160});
    paper.lower();
    paper.show();
    Agent agent(desktop);
    ASSERT_TRUE(await([&] { return agent.buttons().size() == 2; }));
    const Area button = agent.buttons()[0].area;
    desktop.input.move(button.x + 20, button.y + 20);
    desktop.input.press(1);
    for (const int y : {150, 200, 250})
        desktop.input.move(30, y);
    desktop.input.release(1);
    ASSERT_TRUE(await([&] { return agent.buttons()[0].area.x == 6; })); // At the edge.
    agent.cover();
    const auto spots = areasOf(agent.buttons());
    const auto monitors = desktop.screen.monitors();

    for (int round = 0; round < rounds(5, 50); ++round) {
        desktop.server->xrandr({"--output", "DUMMY0", "--off", "--output", "DUMMY1", "--off"});
        ASSERT_TRUE(desktop.screen.monitors().empty());
        EXPECT_TRUE(await([&] { return isEachCoveredOnce(desktop, agent); })) << round;
        paper.paint(round % 2 ? black : white);
        desktop.server->xrandr({"--output", "DUMMY0", "--mode", "1024x768", "--output", "DUMMY1",
                                "--mode", "1024x768", "--right-of", "DUMMY0"});
        ASSERT_EQ(desktop.screen.monitors(), monitors);
        EXPECT_TRUE(await([&] {
            return isEachCoveredOnce(desktop, agent) && areasOf(agent.buttons()) == spots;
        })) << round
            << ": " << testing::PrintToString(areasOf(agent.buttons()));
        for (const Area& monitor : monitors)
            EXPECT_TRUE(await([&] {
                const double expected = round % 2 ? 0 : 153;
                const Area part = {monitor.x + 300, monitor.y + 200, 300, 300};
                return std::abs(desktop.screen.grab(part).mean() - expected) < 6;
            })) << round;
    }
    EXPECT_EQ(agent.process().errors(), "");
}
