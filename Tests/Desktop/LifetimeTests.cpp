#include "Harness/Keys.h"
#include "Harness/MuteServer.h"
#include "Harness/OnDesktop.h"

#include <algorithm>
#include <csignal>
#include <fstream>
#include <sstream>
#include <thread>

using namespace Harness;

namespace {

struct OnPaper : OnDesktop {
    OnPaper() {
        paper.lower();
        paper.show();
    }

    bool isClear() { return desktop.screen.grabWithoutButtons({0, 0, 3200, 1000}).isAll(marker); }

    TestWindow paper{desktop.display(), desktop.screen.bounds()};
};

} // namespace

TEST_F(OnPaper, EndsPolitelyWhateverIsOpen) {
    const std::vector<uint8_t> nothing, menu = {downKey}, settings(5, downKey);
    const std::vector<uint8_t> submenu = {downKey, downKey, downKey, downKey, rightKey};
    int turn = 0;
    for (const bool covered : {true, false})
        for (const auto& [keys, rows] :
             {std::pair(nothing, 0), std::pair(menu, 0), std::pair(settings, 0),
              std::pair(submenu, 0), std::pair(submenu, 10)}) {
            const int signal = std::vector{SIGTERM, SIGINT, SIGHUP}[turn++ % 3];
            SCOPED_TRACE(testing::Message() << "turn " << turn);
            ASSERT_NO_FATAL_FAILURE(start());
            EXPECT_TRUE(isClear());
            if (covered) agent->cover();
            if (keys != nothing) {
                click(agent->buttons()[0].area, 3);
                ASSERT_TRUE(await([&] { return agent->menus().size() == 1; }));
                strike(keys);
            }
            if (keys == submenu) {
                ASSERT_TRUE(await([&] { return agent->menus().size() == 2; }));
                strike(std::vector<uint8_t>(rows, downKey));
            }
            if (keys == settings || keys == submenu) {
                strike({returnKey});
                ASSERT_TRUE(await([&] { return agent->windows().size() == 1; }));
            }
            agent->process().send(signal);
            EXPECT_EQ(agent->process().awaitEnd(), 0);
            EXPECT_TRUE(await([&] { return isClear(); }));
        }
}

TEST_F(OnPaper, IsClearAfterAViolentEnd) {
    for (int i = 0; i < 2; ++i) {
        ASSERT_NO_FATAL_FAILURE(start());
        agent->cover();
        agent->process().send(SIGKILL);
        ASSERT_TRUE(agent->process().awaitEnd());
        EXPECT_TRUE(await([&] { return agent->covers().empty() && isClear(); }));
    }
}

TEST_F(OnPaper, BelongsToTheNewestStart) {
    Agent first(desktop);
    first.cover();
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_EQ(first.process().awaitEnd(), 0);
    EXPECT_TRUE(await([&] { return isClear(); }));
    agent->cover();
}

TEST_F(OnPaper, GoesOnWhenTheSessionBusDies) {
    for (const bool hasBus : {true, false}) {
        ASSERT_NO_FATAL_FAILURE(start());
        agent->cover();
        if (hasBus) desktop.bus.reset();
        agent->uncover();
        agent->cover();
        agent.reset();
    }
}

// Whoever connects to a frozen bus waits for its first word.
TEST_F(OnPaper, StartsBesideAFrozenSessionBus) {
    const MuteServer bus;
    desktop.extra["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + bus.path();
    ASSERT_NO_FATAL_FAILURE(start());
    agent->cover();
}

// It has nothing to save and its own way to start with the session: the session's manager need
// neither ask it before the user logs out nor start it again.
TEST_F(OnPaper, IsNoClientOfTheSessionsManager) {
    const MuteServer manager;
    desktop.extra["SESSION_MANAGER"] = "local/unix:" + manager.path();
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_FALSE(manager.wasCalled());
}

TEST_F(OnPaper, GetsItsStatusItemInATrayThatComesLater) {
    desktop.tray.reset();
    ASSERT_NO_FATAL_FAILURE(start());
    for (int i = 0; i < 3; ++i) {
        desktop.tray.emplace(desktop.display(), 600, 1050);
        ASSERT_TRUE(await([&] { return !desktop.tray->icons().empty(); })) << "tray " << i;
        agent->cover();
        agent->uncover();
        desktop.tray.reset();
    }
}

TEST_F(OnPaper, NeverLeavesAPictureOfTheScreenInACore) {
    ASSERT_NO_FATAL_FAILURE(start());
    std::ifstream limits("/proc/" + std::to_string(agent->process().pid()) + "/limits");
    const std::string text{std::istreambuf_iterator<char>(limits), {}};
    std::istringstream line(text.substr(text.find("Max core file size") + 18));
    std::string soft, hard;
    line >> soft >> hard;
    EXPECT_EQ(soft + hard, "00");
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
TEST(TimedLifetime, EndsSoonWithItsWindowsOpen) {
    Desktop desktop;
    const auto start = Clock::now();
    Agent agent(desktop);
    const double starting = millisecondsSince(start);
    ASSERT_TRUE(await([&] { return agent.buttons().size() == 2; }));
    agent.choose(5);
    ASSERT_TRUE(await([&] { return agent.windows().size() == 1; }));
    agent.cover();
    const auto end = Clock::now();
    agent.process().send(SIGTERM);
    EXPECT_EQ(agent.process().awaitEnd(), 0);
    EXPECT_LE(millisecondsSince(end), 3 * starting);
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
                               {"XDG_RUNTIME_DIR", home.make("runtime").string()},
                               {"QT_QPA_PLATFORM", "offscreen"}};
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
