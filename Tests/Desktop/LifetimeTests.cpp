#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Keys.h"
#include "Harness/MuteServer.h"
#include "Harness/TestWindow.h"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <fstream>
#include <sstream>
#include <thread>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

struct OnPaper : testing::Test {
    OnPaper() : paper(desktop.display(), desktop.screen.bounds()) {
        paper.lower();
        paper.show();
    }

    bool isClear() { return desktop.screen.grabWithoutButtons({0, 0, 3200, 1000}).isAll(marker); }

    Desktop desktop;
    TestWindow paper;
};

} // namespace

TEST_F(OnPaper, IsClearAtEveryStart) {
    for (int i = 0; i < 2; ++i) {
        Agent agent(desktop);
        EXPECT_TRUE(isClear());
        agent.cover();
    }
    EXPECT_TRUE(await([&] { return isClear(); }));
}

TEST_F(OnPaper, IsClearAfterAPoliteEnd) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        for (const bool covered : {true, false}) {
            Agent agent(desktop);
            if (covered) agent.cover();
            agent.process().send(signal);
            EXPECT_EQ(agent.process().awaitEnd(), 0) << "signal " << signal;
            EXPECT_TRUE(await([&] { return isClear(); }));
        }
}

TEST_F(OnPaper, EndsPolitelyWhateverIsOpen) {
    const auto strike = [&](uint8_t key, int times) {
        for (int i = 0; i < times; ++i)
            desktop.input.strike(key);
    };
    const auto hasPanel = [&] {
        return std::ranges::any_of(desktop.screen.windows(), [](const ScreenWindow& window) {
            return window.viewable && window.overrideRedirect &&
                   window.className == "nimbrel-lite" && window.instance != "menu" &&
                   window.instance.find(':') == std::string::npos;
        });
    };
    constexpr int menuAlone = -1;
    const std::pair<const char*, int> openThings[] = {
        {"menu", menuAlone}, {"alert", 0}, {"edition window", 10}}; // By rows of the submenu.
    for (const auto& [name, row] : openThings)
        for (const int signal : {SIGTERM, SIGINT, SIGHUP})
            for (const bool covered : {true, false}) {
                SCOPED_TRACE(testing::Message() << name << ", " << signal << ", " << covered);
                Agent agent(desktop);
                if (covered) agent.cover();
                const Area icon = desktop.tray->icons().back();
                desktop.input.move(icon.x + 5, icon.y + 5);
                desktop.input.click(3);
                ASSERT_TRUE(await([&] { return agent.menus().size() == 1; }));
                if (row != menuAlone) {
                    strike(downKey, 4);
                    strike(rightKey, 1);
                    ASSERT_TRUE(await([&] { return agent.menus().size() == 2; }));
                    strike(downKey, row);
                    strike(returnKey, 1);
                    ASSERT_TRUE(await(hasPanel));
                }
                agent.process().send(signal);
                EXPECT_EQ(agent.process().awaitEnd(), 0);
                EXPECT_TRUE(await([&] { return isClear(); }));
            }
}

TEST_F(OnPaper, IsClearAfterAViolentEnd) {
    {
        Agent agent(desktop);
        agent.cover();
        agent.process().send(SIGKILL);
        ASSERT_TRUE(agent.process().awaitEnd());
        EXPECT_TRUE(await([&] { return agent.covers().empty() && isClear(); }));
    }
    Agent next(desktop);
    next.cover();
}

TEST_F(OnPaper, BelongsToTheNewestStart) {
    Agent first(desktop);
    first.cover();

    Agent second(desktop);

    EXPECT_EQ(first.process().awaitEnd(), 0);
    EXPECT_TRUE(await([&] { return isClear(); }));
    second.cover();
    EXPECT_FALSE(second.process().status());
}

TEST_F(OnPaper, NeedsNoSessionBus) {
    desktop.bus.reset();
    Agent agent(desktop);
    agent.cover();
    agent.uncover();
}

// Whoever connects to a frozen bus waits for its first word.
TEST_F(OnPaper, StartsBesideAFrozenSessionBus) {
    const MuteServer bus;
    desktop.extra["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + bus.path();
    Agent agent(desktop);
    agent.cover();
}

// It has nothing to save and its own way to start with the session: the session's manager need
// neither ask it before the user logs out nor start it again.
TEST_F(OnPaper, IsNoClientOfTheSessionsManager) {
    const MuteServer manager;
    desktop.extra["SESSION_MANAGER"] = "local/unix:" + manager.path();
    Agent agent(desktop);
    agent.cover();
    EXPECT_FALSE(manager.wasCalled());
}

TEST_F(OnPaper, GoesOnWhenTheSessionBusDies) {
    Agent agent(desktop);
    agent.cover();
    desktop.bus.reset();
    agent.uncover();
    agent.cover();
}

TEST_F(OnPaper, GetsItsStatusItemInATrayThatComesLater) {
    desktop.tray.reset();
    Agent agent(desktop);
    for (int i = 0; i < 3; ++i) {
        desktop.tray.emplace(desktop.display(), 600, 1050);
        ASSERT_TRUE(await([&] { return !desktop.tray->icons().empty(); })) << "tray " << i;
        agent.cover();
        agent.uncover();
        desktop.tray.reset();
    }
}

TEST(Lifetime, NeverLeavesAPictureOfTheScreenInACore) {
    Desktop desktop;
    Agent agent(desktop);
    std::ifstream limits("/proc/" + std::to_string(agent.process().pid()) + "/limits");
    const std::string text{std::istreambuf_iterator<char>(limits), {}};
    const size_t line = text.find("Max core file size");
    ASSERT_NE(line, std::string::npos);
    std::string soft;
    std::string hard;
    std::istringstream(text.substr(line + strlen("Max core file size"))) >> soft >> hard;
    EXPECT_EQ(soft, "0");
    EXPECT_EQ(hard, "0");
}

TEST(TimedLifetime, StandsStillWithTheScreen) {
    Desktop desktop;
    Agent agent(desktop);
    for (const bool covered : {false, true}) {
        if (covered) agent.cover();
        std::this_thread::sleep_for(500ms); // for the last of the work that the change made
        const double before = agent.process().processorTime();
        std::this_thread::sleep_for(2s);
        EXPECT_LE(agent.process().processorTime() - before, 0.06)
            << (covered ? "covered" : "clear");
    }
}

// A user who logs out waits for it. Its start is the measure; the end takes about a tenth of that.
TEST(TimedLifetime, EndsSoonWhateverIsOpen) {
    Desktop desktop;
    const auto hasSettings = [&] {
        return std::ranges::any_of(desktop.screen.windows(), [](const ScreenWindow& window) {
            return window.viewable && !window.overrideRedirect && window.area.width == 540;
        });
    };
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        for (const bool covered : {true, false}) {
            SCOPED_TRACE(testing::Message() << "signal " << signal << ", covered " << covered);
            const auto start = Clock::now();
            Agent agent(desktop);
            const double starting = millisecondsSince(start);
            const Area icon = desktop.tray->icons().back();
            desktop.input.move(icon.x + 5, icon.y + 5);
            desktop.input.click(3);
            ASSERT_TRUE(await([&] { return agent.menus().size() == 1; }));
            for (int row = 0; row < 5; ++row)
                desktop.input.strike(downKey);
            desktop.input.strike(returnKey);
            ASSERT_TRUE(await(hasSettings));
            if (covered) agent.cover();

            const auto end = Clock::now();
            agent.process().send(signal);
            EXPECT_EQ(agent.process().awaitEnd(), 0);
            EXPECT_LE(millisecondsSince(end), 3 * starting);
            EXPECT_TRUE(await([&] { return !hasSettings() && agent.covers().empty(); }));
        }
}

TEST(Lifetime, EndsWithTheServer) {
    for (const bool covered : {true, false}) {
        Desktop desktop;
        Agent agent(desktop);
        if (covered) agent.cover();
        desktop.server->process().send(SIGKILL);
        const auto status = agent.process().awaitEnd();
        ASSERT_TRUE(status) << "still running";
        EXPECT_GT(*status, 0);
        EXPECT_LT(*status, 128) << "died of a signal: " << agent.process().errors();
    }
}

TEST(Lifetime, SaysInOneSentenceThatThereIsNoDisplay) {
    Folder home;
    Environment environment = {{"PATH", inheritedEnvironment()["PATH"]},
                               {"HOME", home.path().string()},
                               {"XDG_RUNTIME_DIR", home.make("runtime").string()}};
    for (const char* display : {"", ":987654"}) {
        environment.erase("DISPLAY");
        if (*display) environment["DISPLAY"] = display;
        Process process(Agent::command(), environment);
        const auto status = process.awaitEnd();
        ASSERT_TRUE(status) << "still running";
        EXPECT_GT(*status, 0);
        EXPECT_LT(*status, 128) << "died of a signal";
        const std::string errors = process.errors();
        EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
    }
}

TEST(Lifetime, TakesThePlatformOfItsServerWhateverIsChosenForOthers) {
    Desktop desktop;
    for (const char* platform : {"wayland", "wayland;xcb", "wayland-egl", "minimal"}) {
        desktop.extra = {{"QT_QPA_PLATFORM", platform}, {"WAYLAND_DISPLAY", "wayland-0"}};
        Agent agent(desktop);
        agent.cover();
        EXPECT_EQ(agent.process().errors(), "");
    }
}

TEST(Lifetime, CoversNothingOfAWaylandSessionAndSaysWhy) {
    Desktop desktop(XServer::framebuffer());
    desktop.server->xrandr({"--setmonitor", "XWAYLAND0", "3200/800x1080/300+0+0", "screen"});
    Agent agent(desktop);
    const auto strikeTheKey = [&] {
        for (const uint8_t key : {controlKey, altKey, superKey, nKey})
            desktop.input.hold(key);
        for (const uint8_t key : {nKey, superKey, altKey, controlKey})
            desktop.input.letGo(key);
    };
    for (const bool byKey : {false, true}) {
        byKey ? strikeTheKey() : agent.toggle();
        ASSERT_TRUE(await([&] { return agent.windows().size() == 1; }));
        EXPECT_TRUE(holdsFor(300ms, [&] { return agent.visibleCovers().empty(); }));
        strikeTheKey();
        EXPECT_TRUE(holdsFor(300ms, [&] { return agent.windows().size() == 1; }));
        desktop.input.strike(returnKey);
        EXPECT_TRUE(await([&] { return agent.windows().empty(); }));
    }
    EXPECT_EQ(agent.process().errors(),
              "X11: this is a Wayland session, which cannot be covered.\n");
}
