#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Portal.h"
#include "Harness/SettingsManager.h"
#include "Harness/TestWindow.h"

#include <gtest/gtest.h>

using namespace Harness;

namespace {

constexpr uint32_t solid = 0x0E1015;

bool isSolid(const Desktop& desktop) {
    return desktop.screen.grabWithoutButtons(Desktop::left).isAll(solid) &&
           desktop.screen.grabWithoutButtons(Desktop::right).isAll(solid);
}

bool isBlurred(const Desktop& desktop) {
    return desktop.screen.grab(Desktop::left).mean() > 120 &&
           desktop.screen.grab(Desktop::right).mean() > 120;
}

struct ReduceTransparency : testing::Test {
    ReduceTransparency() : paper(desktop.display(), desktop.screen.bounds()) {
        paper.paint(white);
        paper.lower();
        paper.show();
    }

    Desktop desktop;
    TestWindow paper;
};

} // namespace

TEST_F(ReduceTransparency, ChangesTheCoverAtOnce) {
    Portal portal(desktop.bus->address(), false);
    Agent agent(desktop);
    agent.cover();
    EXPECT_TRUE(isBlurred(desktop));

    for (int i = 0; i < 3; ++i) {
        portal.setHighContrast(true);
        EXPECT_TRUE(await([&] { return isSolid(desktop); })) << "on " << i;
        EXPECT_TRUE(agent.isCovered());
        portal.setHighContrast(false);
        EXPECT_TRUE(await([&] { return isBlurred(desktop); })) << "off " << i;
        EXPECT_TRUE(agent.isCovered());
    }
}

TEST_F(ReduceTransparency, IsReadAtTheStart) {
    Portal portal(desktop.bus->address(), true);
    Agent agent(desktop);
    agent.cover();
    EXPECT_TRUE(isSolid(desktop));
}

TEST_F(ReduceTransparency, ChangedWhileClearCountsFromTheNextTime) {
    Portal portal(desktop.bus->address(), false);
    Agent agent(desktop);
    portal.setHighContrast(true);
    EXPECT_TRUE(holdsFor(300ms, [&] { return agent.visibleCovers().empty(); }));
    agent.cover();
    EXPECT_TRUE(isSolid(desktop));
}

TEST_F(ReduceTransparency, StaysAsThePortalToldItLast) {
    std::optional<Portal> portal(std::in_place, desktop.bus->address(), true);
    Agent agent(desktop);
    agent.cover();
    EXPECT_TRUE(await([&] { return isSolid(desktop); }));
    portal.reset();
    agent.uncover();
    agent.cover();
    EXPECT_TRUE(isSolid(desktop));
}

TEST_F(ReduceTransparency, IsWhatTheThemeTellsWhereNoPortalDoes) {
    Agent agent(desktop);
    agent.cover();
    EXPECT_TRUE(isBlurred(desktop));
    SettingsManager manager(desktop.display());
    for (int i = 0; i < 2; ++i) {
        manager.tell({{"Net/IconThemeName", "Tango"}, {"Net/ThemeName", "HighContrast"}});
        EXPECT_TRUE(await([&] { return isSolid(desktop); })) << "on " << i;
        manager.tell({{"Net/ThemeName", "Xfce"}}, {{"Gdk/WindowScalingFactor", 1}});
        EXPECT_TRUE(await([&] { return isBlurred(desktop); })) << "off " << i;
    }
}
