#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

#include <csignal>
#include <thread>

using namespace Harness;

namespace {

struct Lifetime : OnDesktop {
    bool isClear() const {
        return desktop.screen.grabWithoutButtons({0, 0, 3200, 1000}).isAll(marker);
    }

    const Paper paper{desktop, marker};
};

} // namespace

TEST_F(Lifetime, EndsPolitelyWhateverIsOpen) {
    const std::vector<uint8_t> settings(Row::settings, downKey);
    const std::vector<uint8_t> submenu = {downKey, downKey, downKey, downKey, rightKey};
    for (const auto& [signal, keys, opens] :
         {std::tuple{SIGTERM, submenu, false}, {SIGINT, submenu, true}, {SIGHUP, settings, true}}) {
        SCOPED_TRACE(signal);
        ASSERT_NO_FATAL_FAILURE(start());
        EXPECT_TRUE(isClear());
        agent->cover();
        agent->openMenu();
        strike(keys);
        if (opens) strike({returnKey});
        const size_t windows = opens ? 1 : 0;
        EXPECT_SOON(agent->windows().size() == windows && agent->menus().size() == 2 - 2 * windows);
        agent->process().send(signal);
        EXPECT_EQ(agent->process().awaitEnd(), 0);
        EXPECT_SOON(isClear());
    }
}

TEST_F(Lifetime, IsClearAfterAViolentEndAndBelongsToTheNewestStart) {
    ASSERT_NO_FATAL_FAILURE(start());
    agent->cover();
    agent->process().send(SIGKILL);
    ASSERT_TRUE(agent->process().awaitEnd());
    EXPECT_SOON(agent->covers().empty() && isClear());
    Agent first(desktop);
    first.cover();
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_EQ(first.process().awaitEnd(), 0);
    EXPECT_SOON(isClear());
    agent->cover();
}

// Two that start at once may each ask the other: the newer one stays.
TEST_F(Lifetime, EndsForANewerInstanceAlone) {
    const QString instances = "com.vardek.NimbrelLite.Instances";
    const auto join = [&](const char* name) {
        const auto bus = QDBusConnection::connectToBus(desktop.bus->address(), name);
        bus.interface()->registerService(instances, QDBusConnectionInterface::QueueService);
        return bus;
    };
    const auto older = join("older");
    ASSERT_NO_FATAL_FAILURE(start());
    const auto newer = join("newer");
    const QDBusReply<QStringList> all = older.interface()->call("ListQueuedOwners", instances);
    ASSERT_EQ(all.value().size(), 3);
    const auto end = QDBusMessage::createMethodCall(all.value()[1], "/com/vardek/NimbrelLite",
                                                    "org.freedesktop.Application", "ActivateAction")
                     << "quit" << QVariantList() << QVariantMap();
    EXPECT_EQ(older.call(end).type(), QDBusMessage::ErrorMessage);
    newer.send(end);
    EXPECT_EQ(agent->process().awaitEnd(), 0);
    for (const auto& bus : {older, newer})
        QDBusConnection::disconnectFromBus(bus.name());
}

TEST_F(Lifetime, GoesOnWithoutABusAndBesideAFrozenOne) {
    ASSERT_NO_FATAL_FAILURE(start());
    agent->cover();
    desktop.bus.reset();
    agent->uncover();
    for (const bool frozen : {false, true}) {
        if (frozen) desktop.bus.emplace().freeze();
        ASSERT_NO_FATAL_FAILURE(start());
        agent->cover();
    }
}

TEST_F(Lifetime, StandsStillWithTheScreen) {
    for (const bool composited : {false, true}) {
        const auto compositor = composited ? desktop.startCompositor() : nullptr;
        ASSERT_NO_FATAL_FAILURE(start());
        const auto sleepsThrough = [&](std::chrono::milliseconds time) {
            const long before = agent->process().sleeps();
            std::this_thread::sleep_for(time);
            return agent->process().sleeps() - before <= 1;
        };
        EXPECT_SOON(sleepsThrough(1s)) << "once the buttons have faded";
        agent->cover();
        EXPECT_SOON(sleepsThrough(1s)) << "covered";
    }
}

TEST(Process, EndsWithTheServerAndSaysInOneSentenceThatThereIsNone) {
    const auto expectEnd = [](Process& process) {
        const auto status = process.awaitEnd();
        ASSERT_TRUE(status) << "still running";
        EXPECT_GT(*status, 0);
        EXPECT_LT(*status, 128) << "died of a signal: " << process.errors();
    };
    Environment environment;
    for (const bool covered : {true, false}) {
        Desktop desktop;
        Agent agent(desktop);
        if (covered) agent.cover();
        environment = desktop.environment();
        desktop.server->process().send(SIGKILL);
        ASSERT_NO_FATAL_FAILURE(expectEnd(agent.process()));
    }
    environment["QT_QPA_PLATFORM"] = "offscreen";
    for (const char* display : {"", ":987654"}) {
        environment["DISPLAY"] = display;
        Process process(Agent::command(), environment);
        ASSERT_NO_FATAL_FAILURE(expectEnd(process));
        EXPECT_EQ(std::ranges::count(process.errors(), '\n'), 1) << process.errors();
    }
}

TEST(Process, CoversNothingOfAWaylandSessionAndSaysWhy) {
    Desktop desktop(XServer::framebuffer());
    desktop.server->xrandr({"--setmonitor", "XWAYLAND0", "3200/800x1080/300+0+0", "screen"});
    Agent agent(desktop);
    for (const bool byKey : {false, true}) {
        byKey ? desktop.input.strikeChord() : agent.toggle();
        ASSERT_SOON(agent.windows().size() == 1);
        EXPECT_FOR(300ms, agent.visibleCovers().empty());
        desktop.input.strikeChord();
        EXPECT_FOR(300ms, agent.windows().size() == 1);
        desktop.input.strike(returnKey);
        EXPECT_SOON(agent.windows().empty());
    }
    EXPECT_EQ(agent.process().errors(),
              "X11: this is a Wayland session, which cannot be covered.\n");
}
