#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/TestWindow.h"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <fstream>
#include <sstream>
#include <thread>

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

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
    const Folder folder;
    const std::string path = (folder.path() / "bus").string();
    sockaddr_un address{AF_UNIX, {}};
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int bus = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(::bind(bus, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(::listen(bus, 5), 0);
    desktop.extra["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + path;
    {
        Agent agent(desktop);
        agent.cover();
    }
    ::close(bus);
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
