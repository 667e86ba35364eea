// What the desktop tells of the user's wishes. A change of contrast under the cover is with the
// looks.
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/SettingsManager.h"

#include <fstream>

using namespace Harness;

namespace {

struct Wishes : OnDesktop {
    bool isSolid() const {
        return desktop.screen.grabWithoutButtons({0, 0, 3200, 1024}).isAll(0x0E1015);
    }
    bool isBlurred() const { return desktop.screen.grab({0, 0, 3200, 1024}).mean() > 120; }

    Paper paper{desktop};
};

} // namespace

TEST_F(Wishes, ForContrastAreWhatTheThemeTellsWhereNothingElseDoes) {
    agent.emplace(desktop);
    agent->cover();
    EXPECT_TRUE(isBlurred());
    SettingsManager manager(desktop);
    for (int i = 0; i < 2; ++i) {
        manager.tell("Net/IconThemeName \"Tango\"\nNet/ThemeName \"HighContrast\"");
        EXPECT_SOON(isSolid()) << i;
        manager.tell("Net/ThemeName \"Xfce\"\nGdk/WindowScalingFactor 1");
        EXPECT_SOON(isBlurred()) << i;
    }
}

TEST_F(Wishes, ForDarkColoursAreTheToolkitsWhereNothingElseTells) {
    desktop.extra = {{"XDG_CURRENT_DESKTOP", "KDE"}, {"KDE_SESSION_VERSION", "5"}};
    const std::filesystem::path folder = desktop.environment()["XDG_CONFIG_HOME"];
    for (const bool isDark : {true, false}) {
        std::ofstream file(folder / "kdeglobals");
        for (const char* group : {"Button", "Window", "View"})
            file << "[Colors:" << group << "]\n"
                 << (isDark ? "BackgroundNormal=49,54,59\nForegroundNormal=239,240,241\n"
                            : "BackgroundNormal=239,240,241\nForegroundNormal=49,54,59\n");
        file.close();
        ASSERT_NO_FATAL_FAILURE(start());
        agent->choose(Row::settings);
        EXPECT_SOON(
            agent->windows().size() == 1 &&
            desktop.screen.grab(agent->windows()[0].area).count(isDark ? 0x29292B : 0xF5F5F7) >
                10000)
            << isDark;
    }
}
