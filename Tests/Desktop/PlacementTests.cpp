// Where buttons, menus and windows stand, whatever the size and the scale of the monitors.
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/SettingsManager.h"

#include <cmath>

using namespace Harness;

namespace {

struct Case {
    const char* name;
    std::vector<Area> monitors; ///< From the left to the right.
    Environment environment;
    std::vector<double> scales; ///< Of each monitor.
    const char* settings = "";  ///< What the desktop tells on the server.
};

std::vector<Case> cases() {
    const std::vector<Area> two = {Desktop::left, Desktop::right};
    const std::vector<Area> odd = {{0, 0, 1367, 769}, {1367, 13, 801, 601}};
    const std::vector<Area> offset = {{0, 200, 1920, 1080}, {1920, 0, 2560, 1440}};
    return {
        {"One", two, {}, {1, 1}},
        {"DoubleByTheDesktop", two, {}, {2, 2}, "Gdk/WindowScalingFactor 2"},
        {"InTheResolutionAlready",
         two,
         {},
         {1, 1},
         "Gdk/UnscaledDPI 98304\nGdk/WindowScalingFactor 2"},
        {"SecondDouble", offset, {{"QT_SCREEN_SCALE_FACTORS", "1;2"}}, {1, 2}},
        {"FirstDouble", offset, {{"QT_SCREEN_SCALE_FACTORS", "2;1"}}, {2, 1}},
        {"OddByAQuarter", odd, {{"QT_SCALE_FACTOR", "1.25"}}, {1.25, 1.25}},
        {"OddByFractions", odd, {{"QT_SCREEN_SCALE_FACTORS", "1.5;1.25"}}, {1.5, 1.25}},
        {"Small", {{0, 0, 1024, 600}}, {}, {1}},
        {"SmallByAHalf", {{0, 0, 1366, 768}}, {{"QT_SCALE_FACTOR", "1.5"}}, {1.5}},
    };
}

std::unique_ptr<XServer> serverOf(const std::vector<Area>& monitors) {
    auto server = XServer::framebuffer({"-screen", "0", "4480x1440x24"});
    for (size_t i = 0; i < monitors.size(); ++i)
        server->setMonitor(std::to_string(i), monitors[i], i == 0 ? "screen" : "none");
    return server;
}

struct Placement : OnDesktop, testing::WithParamInterface<Case> {
    Placement() : OnDesktop(serverOf(GetParam().monitors)) {
        desktop.extra = GetParam().environment;
        teller.tell(GetParam().settings);
    }

    /// Each button stands where it belongs, at the right edge of its monitor.
    bool buttonsArePlaced() const {
        const auto buttons = agent->buttons();
        if (buttons.size() != GetParam().monitors.size()) return false;
        for (size_t i = 0; i < buttons.size(); ++i) {
            const Area& monitor = GetParam().monitors[i];
            const Area& button = buttons[i].area;
            const auto isAbout = [&](int pixels, double points) {
                return std::abs(pixels - points * GetParam().scales[i]) <= 1;
            };
            if (!monitor.contains(button) || !isAbout(button.width, 44) ||
                !isAbout(button.height, 44) || !isAbout(monitor.right() - button.right(), 6))
                return false;
        }
        return true;
    }
    void openMenu(size_t which, int row = 0) {
        const ScreenWindow button = agent->buttons().at(which);
        desktop.input.move(button.area.middle());
        // It takes clicks once it has been drawn at its monitor's scale.
        ASSERT_SOON(desktop.screen.windowAtPointer() == button.number);
        agent->openMenu(row, which);
    }
    void expectOnMonitor(size_t which, const Area& area) const {
        EXPECT_TRUE(GetParam().monitors[which].contains(area)) << area;
    }

    SettingsManager teller{desktop};
};

} // namespace

TEST_P(Placement, IsOnTheMonitorAndOfTheSettingsItsMiddle) {
    for (const bool managed : {false, true}) {
        const auto manager = managed ? desktop.startWindowManager() : nullptr;
        const Paper paper(desktop);
        ASSERT_NO_FATAL_FAILURE(start());
        EXPECT_SOON(buttonsArePlaced());
        agent->cover();
        for (const Area& monitor : GetParam().monitors)
            EXPECT_LE(desktop.screen.grabWithoutButtons(monitor).brightest(), 160) << monitor;
        agent->uncover();
        for (size_t i = 0; i < GetParam().monitors.size(); ++i) {
            SCOPED_TRACE(testing::Message() << "monitor " << i << ", managed " << managed);
            ASSERT_NO_FATAL_FAILURE(openMenu(i, Row::features));
            const Area menu = agent->menus()[0].area;
            const auto [x, y] = agent->buttons()[i].area.middle();
            expectOnMonitor(i, menu);
            EXPECT_TRUE(menu.grown(2).contains({x, y, 1, 1})) << menu;
            strike({rightKey});
            ASSERT_SOON(agent->menus().size() == 2);
            expectOnMonitor(i, agent->menus()[1].area);
            strike({escapeKey, escapeKey});
            ASSERT_SOON(agent->menus().empty());

            ASSERT_NO_FATAL_FAILURE(openMenu(i, Row::settings));
            strike({returnKey});
            ASSERT_SOON(desktop.screen.textOf(desktop.screen.focus(), "_NET_WM_NAME") == "General");
            const Area frame = desktop.screen.frameAround(desktop.screen.focus());
            const Area& monitor = GetParam().monitors[i];
            EXPECT_NEAR(frame.x + frame.right(), monitor.x + monitor.right(), 4);
            expectOnMonitor(i, frame);
            ASSERT_NO_FATAL_FAILURE(start()); // They would come back where they were.
            EXPECT_SOON(buttonsArePlaced());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, Placement, testing::ValuesIn(cases()),
                         [](const auto& each) { return std::string(each.param.name); });
