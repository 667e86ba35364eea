// The machine goes to sleep, or the screens alone.
#include "Harness/Logind.h"
#include "Harness/MuteServer.h"
#include "Harness/OnDesktop.h"
#include "Harness/Soak.h"

#include <csignal>

using namespace Harness;

namespace {

struct Sleep : testing::Test {
    explicit Sleep(const std::vector<std::string>& serverArguments = {})
        : desktop(Desktop::twoMonitors(serverArguments)),
          paper(desktop.display(), desktop.screen.bounds()) {
        paintHalves(white, 0x808080);
        paper.lower();
        paper.show();
        desktop.extra["DBUS_SYSTEM_BUS_ADDRESS"] = logind.address();
    }

    /// Each monitor is of two colours, so that its live blur is of many.
    void paintHalves(uint32_t outer, uint32_t inner) {
        paper.paint(3200, 8, [=](int x, int) { return x < 900 || x > 2500 ? outer : inner; });
    }

    bool isPlain() const {
        const auto isOneColour = [this](const Area& monitor) {
            const Picture picture = desktop.screen.grabWithoutButtons(monitor);
            return picture.isAll(picture.at(monitor.x, monitor.y)) && picture.brightest() < 60;
        };
        return isOneColour(Desktop::left) && isOneColour(Desktop::right);
    }
    bool isBlurred() const {
        return desktop.screen.grab({100, 300, 100, 400}).mean() >
               desktop.screen.grab({1700, 300, 100, 400}).mean() + 20;
    }
    bool isReady() const {
        return await([&] { return isBlurred() && logind.isDelayed(); });
    }

    Desktop desktop;
    Logind logind;
    TestWindow paper;
};

struct SleepWithout : Sleep, testing::WithParamInterface<const char*> {
    SleepWithout() : Sleep({"-extension", GetParam()}) {}
};

} // namespace

TEST_P(SleepWithout, LiesUnderAPlainCover) {
    Agent agent(desktop);
    EXPECT_TRUE(holdsFor(300ms, [&] { return logind.asked() == 0; })) << "before the first cover";
    const bool isLive = GetParam() == std::string("DOUBLE-BUFFER");
    for (int i = 0; i < 2; ++i) {
        agent.cover();
        for (int night = 0; night < 2; ++night) {
            ASSERT_TRUE(isReady()) << night;
            const Picture before = desktop.screen.grabWithoutButtons(Desktop::right);
            logind.announce(true);
            ASSERT_TRUE(await([&] { return !logind.isDelayed(); })) << night;
            EXPECT_TRUE(isPlain()) << "as the machine goes to sleep";
            EXPECT_TRUE(agent.isCovered());
            if (isLive) paintHalves(night ? white : 0xFFFFF0, 0x808080);
            EXPECT_TRUE(holdsFor(200ms, [&] { return isPlain(); }));
            logind.announce(false);
            ASSERT_TRUE(isReady()) << night;
            EXPECT_TRUE(isLive || await([&] {
                            return desktop.screen.grabWithoutButtons(Desktop::right) == before;
                        }))
                << night;
        }
        agent.uncover();
        EXPECT_TRUE(await([&] { return !logind.isDelayed(); }));
    }
    logind.announce(true);
    EXPECT_TRUE(holdsFor(200ms, [&] { return agent.visibleCovers().empty(); }));
    agent.cover();
    EXPECT_TRUE(await([&] { return isPlain(); })) << "covered on the brink of sleep";
    logind.announce(false);
    EXPECT_TRUE(isReady());
    if (isLive) {
        paintHalves(0x808080, 0x202020);
        EXPECT_TRUE(await([&] {
            return desktop.screen.grab({100, 300, 9, 9}).brightest() < 0x70;
        }));
    }
    agent.process().send(SIGTERM);
    EXPECT_TRUE(await([&] { return !logind.isDelayed(); })) << "after the end";
}

// The last of them is of no use to the program.
INSTANTIATE_TEST_SUITE_P(All, SleepWithout, testing::Values("Composite", "RENDER", "DOUBLE-BUFFER"),
                         [](const auto& each) {
                             std::string name = each.param;
                             std::erase(name, '-');
                             return name;
                         });

TEST_F(Sleep, OfTheScreensAloneKeepsTheBlurLive) {
    Agent agent(desktop);
    agent.cover();
    const auto isReadable = [&] {
        const auto isIt = [&](const Area& monitor) {
            const Picture picture = desktop.screen.grabWithoutButtons(monitor);
            return picture.count(marker) > 0 || picture.brightest() > 160;
        };
        return isIt(Desktop::left) || isIt(Desktop::right);
    };
    for (int night = 0; night < rounds(3, 50); ++night) {
        xcb_force_screen_saver(paper.client(), XCB_SCREEN_SAVER_ACTIVE);
        paintHalves(marker, white);
        EXPECT_TRUE(holdsFor(100ms, [&] { return !isReadable(); })) << night;
        xcb_force_screen_saver(paper.client(), XCB_SCREEN_SAVER_RESET);
        paper.client().settle();
        EXPECT_TRUE(holdsFor(100ms, [&] { return !isReadable(); })) << night;
        EXPECT_TRUE(agent.isCovered());
        paintHalves(white, 0x202020);
        EXPECT_TRUE(await([&] { return isBlurred(); })) << night;
        paintHalves(0x202020, 0x202020);
        EXPECT_TRUE(await([&] { return !isBlurred(); })) << night;
    }
    EXPECT_EQ(agent.process().errors(), "");
}

TEST_F(Sleep, NeitherASilentBusNorNoneHoldsTheCover) {
    const MuteServer silent;
    for (const std::string& bus : {silent.path(), silent.path() + "-none"}) {
        desktop.extra["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=" + bus;
        Agent agent(desktop);
        for (int i = 0; i < 3; ++i) {
            agent.cover();
            agent.uncover();
        }
        EXPECT_EQ(agent.process().errors(), "");
    }
}
