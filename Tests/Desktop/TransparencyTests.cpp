#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/Portal.h"
#include "Harness/SettingsManager.h"

#include <filesystem>
#include <fstream>

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
    Desktop desktop;
    Paper paper{desktop};
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

TEST_F(ReduceTransparency, IsReadAtTheStartAndChangedWhileClear) {
    std::optional<Portal> portal(std::in_place, desktop.bus->address(), true);
    Agent agent(desktop);
    for (const bool wished : {true, false, true}) {
        portal->setHighContrast(wished);
        EXPECT_TRUE(holdsFor(300ms, [&] { return agent.visibleCovers().empty(); }));
        agent.cover();
        EXPECT_TRUE(wished ? isSolid(desktop) : isBlurred(desktop)) << wished;
        agent.uncover();
    }
    portal.reset();
    agent.cover();
    EXPECT_TRUE(isSolid(desktop)) << "as it was told last";
}

TEST_F(OnDesktop, WindowsAreDarkWhereOnlyTheToolkitKnowsOfIt) {
    desktop.extra = {{"XDG_CURRENT_DESKTOP", "KDE"}, {"KDE_SESSION_VERSION", "5"}};
    const std::filesystem::path folder = desktop.environment()["XDG_CONFIG_HOME"];
    const std::string dark = "49,54,59";
    const std::string light = "239,240,241";
    for (const bool isDark : {true, false}) {
        std::ofstream file(folder / "kdeglobals");
        for (const char* group : {"Button", "Window", "View"})
            file << "[Colors:" << group << "]\nBackgroundNormal=" << (isDark ? dark : light)
                 << "\nForegroundNormal=" << (isDark ? light : dark) << '\n';
        file.close();
        agent.reset();
        ASSERT_NO_FATAL_FAILURE(start());
        agent->choose(5);
        EXPECT_TRUE(await([&] {
            const auto windows = agent->windows();
            return windows.size() == 1 &&
                   desktop.screen.grab(windows[0].area).count(isDark ? 0x29292B : 0xF5F5F7) > 10000;
        })) << isDark;
    }
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
