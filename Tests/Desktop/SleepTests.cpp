// The machine goes to sleep.
#include "Harness/Logind.h"
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"

#include <csignal>

using namespace Harness;

namespace {

struct SleepWithout : OnDesktop, testing::WithParamInterface<const char*> {
    SleepWithout() : OnDesktop(Desktop::twoMonitors({"-extension", GetParam()})) {
        paintHalves(white, 0x808080);
        desktop.extra["DBUS_SYSTEM_BUS_ADDRESS"] = logind.address().toStdString();
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

    Logind logind;
    Paper paper{desktop};
};

} // namespace

TEST_P(SleepWithout, LiesUnderAPlainCover) {
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_FOR(300ms, !logind.wasAsked()) << "before the first cover";
    const bool isLive = GetParam() == std::string("DOUBLE-BUFFER");
    agent->cover();
    for (int night = 0; night < 2; ++night) {
        ASSERT_TRUE(isReady()) << night;
        const Picture before = desktop.screen.grabWithoutButtons(Desktop::right);
        logind.announce(true);
        ASSERT_SOON(!logind.isDelayed()) << night;
        EXPECT_TRUE(isPlain()) << "as the machine goes to sleep";
        EXPECT_TRUE(agent->isCovered());
        if (isLive) paintHalves(night ? white : 0xFFFFF0, 0x808080);
        EXPECT_FOR(200ms, isPlain());
        logind.announce(false);
        ASSERT_TRUE(isReady()) << night;
        EXPECT_SOON(isLive || desktop.screen.grabWithoutButtons(Desktop::right) == before) << night;
    }
    agent->uncover();
    EXPECT_SOON(!logind.isDelayed());
    logind.announce(true);
    EXPECT_FOR(200ms, agent->visibleCovers().empty());
    agent->cover();
    EXPECT_SOON(isPlain()) << "covered on the brink of sleep";
    logind.announce(false);
    EXPECT_TRUE(isReady());
    if (isLive) paintHalves(0x808080, 0x202020);
    EXPECT_SOON(!isLive || desktop.screen.grab({100, 300, 9, 9}).brightest() < 0x70);
    agent->process().send(SIGTERM);
    EXPECT_SOON(!logind.isDelayed()) << "after the end";
}

// The last of them is of no use to the program.
INSTANTIATE_TEST_SUITE_P(All, SleepWithout, testing::Values("Composite", "DOUBLE-BUFFER"),
                         [](const auto& each) { return letters(each.param); });
