// Where buttons, menus and windows stand, whatever the size and the scale of the monitors.
#include "Harness/Keys.h"
#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/SettingsManager.h"

#include <algorithm>
#include <cmath>
#include <sstream>

using namespace Harness;

namespace {

struct Case {
    const char* name;
    std::vector<Area> monitors; ///< From the left to the right.
    Environment environment;
    std::vector<double> scales; ///< Of each monitor.
    /// What the desktop tells on the server.
    std::map<std::string, uint32_t> settings = {};
};

constexpr double inset = 6; ///< Of a button, in points; and its size.
constexpr double buttonSize = 44;

std::vector<Case> cases() {
    const std::vector<Area> two = {Desktop::left, Desktop::right};
    const std::vector<Area> odd = {{0, 0, 1367, 769}, {1367, 13, 801, 601}};
    const std::vector<Area> offset = {{0, 200, 1920, 1080}, {1920, 0, 2560, 1440}};
    return {
        {"One", two, {}, {1, 1}},
        {"ByAQuarter", two, {{"QT_SCALE_FACTOR", "1.25"}}, {1.25, 1.25}},
        {"ByAHalf", two, {{"QT_SCALE_FACTOR", "1.5"}}, {1.5, 1.5}},
        {"Double", two, {{"QT_SCALE_FACTOR", "2"}}, {2, 2}},
        {"DoubleByTheDesktop", two, {}, {2, 2}, {{"Gdk/WindowScalingFactor", 2}}},
        {"InTheResolutionAlready",
         two,
         {},
         {1, 1},
         {{"Gdk/UnscaledDPI", 96 * 1024}, {"Gdk/WindowScalingFactor", 2}}},
        {"SecondDouble", offset, {{"QT_SCREEN_SCALE_FACTORS", "1;2"}}, {1, 2}},
        {"FirstDouble", offset, {{"QT_SCREEN_SCALE_FACTORS", "2;1"}}, {2, 1}},
        {"EachByAFraction", two, {{"QT_SCREEN_SCALE_FACTORS", "1.5;1.25"}}, {1.5, 1.25}},
        {"OddByAQuarter", odd, {{"QT_SCALE_FACTOR", "1.25"}}, {1.25, 1.25}},
        {"OddByFractions", odd, {{"QT_SCREEN_SCALE_FACTORS", "1.5;1.25"}}, {1.5, 1.25}},
        {"Small", {{0, 0, 1024, 600}}, {}, {1}},
        {"SmallByAHalf", {{0, 0, 1366, 768}}, {{"QT_SCALE_FACTOR", "1.5"}}, {1.5}},
    };
}

std::unique_ptr<XServer> serverOf(const std::vector<Area>& monitors) {
    int width = 0;
    int height = 0;
    for (const Area& monitor : monitors) {
        width = std::max(width, monitor.right());
        height = std::max(height, monitor.bottom());
    }
    auto server = XServer::framebuffer(
        {"-screen", "0", std::to_string(width) + "x" + std::to_string(height) + "x24"});
    std::string name = "A";
    for (const Area& monitor : monitors) {
        std::ostringstream place;
        place << monitor.width << "/300x" << monitor.height << "/200+" << monitor.x << "+"
              << monitor.y;
        server->xrandr({"--setmonitor", name, place.str(), name == "A" ? "screen" : "none"});
        ++name[0];
    }
    return server;
}

struct Placement : testing::TestWithParam<Case> {
    Placement()
        : desktop(serverOf(GetParam().monitors)), client(desktop.display()),
          teller(desktop.display()) {
        desktop.extra = GetParam().environment;
        teller.tell({}, GetParam().settings);
    }

    /// Waits until each button stands where it belongs, at the right edge of its monitor.
    void start() {
        agent.reset();
        agent.emplace(desktop);
        EXPECT_TRUE(await([&] { return buttonsArePlaced(); }));
        ASSERT_EQ(agent->buttons().size(), GetParam().monitors.size());
    }
    bool buttonsArePlaced() const {
        const auto buttons = agent->buttons();
        if (buttons.size() != GetParam().monitors.size()) return false;
        const auto isAbout = [](double value, double expected) {
            return std::abs(value - expected) <= 1;
        };
        for (size_t i = 0; i < buttons.size(); ++i) {
            const Area& monitor = GetParam().monitors[i];
            const double scale = GetParam().scales[i];
            const Area& button = buttons[i].area;
            if (!monitor.contains(button) || !isAbout(button.width, buttonSize * scale) ||
                !isAbout(button.height, buttonSize * scale) ||
                !isAbout(monitor.right() - button.right(), inset * scale))
                return false;
        }
        return true;
    }
    void openMenu(size_t which) {
        const ScreenWindow button = agent->buttons().at(which);
        const auto [x, y] = button.area.middle();
        pointer = {x, y, 1, 1};
        desktop.input.move(x, y);
        // It takes clicks once it has been drawn at its monitor's scale.
        ASSERT_TRUE(await([&] { return windowAtPointer() == button.number; }));
        desktop.input.click(3);
        ASSERT_TRUE(await([&] { return agent->menus().size() == 1; }));
    }
    xcb_window_t windowAtPointer() const {
        return client.ask(xcb_query_pointer_reply, xcb_query_pointer(client, client.root()))->child;
    }

    Desktop desktop;
    const XClient client;
    SettingsManager teller;
    std::optional<Agent> agent;
    Area pointer;
};

} // namespace

TEST_P(Placement, OfCoversButtonsAndMenusIsOnTheirMonitor) {
    const Paper paper(desktop);
    ASSERT_NO_FATAL_FAILURE(start());
    agent->cover();
    for (const Area& monitor : GetParam().monitors)
        EXPECT_LE(desktop.screen.grabWithoutButtons(monitor).brightest(), 160) << monitor;
    agent->uncover();
    for (size_t i = 0; i < GetParam().monitors.size(); ++i) {
        SCOPED_TRACE(testing::Message() << "monitor " << i);
        const Area& monitor = GetParam().monitors[i];
        ASSERT_NO_FATAL_FAILURE(openMenu(i));
        const Area menu = agent->menus()[0].area;
        EXPECT_TRUE(monitor.contains(menu)) << menu;
        EXPECT_TRUE(menu.grown(2).contains(pointer)) << menu << " is not at " << pointer;
        desktop.input.strike(downKey, 4);
        desktop.input.strike(rightKey);
        ASSERT_TRUE(await([&] { return agent->menus().size() == 2; }));
        EXPECT_TRUE(monitor.contains(agent->menus()[1].area)) << agent->menus()[1].area;
        desktop.input.strike(escapeKey, 2);
        ASSERT_TRUE(await([&] { return agent->menus().empty(); }));
    }
}

TEST_P(Placement, OfTheSettingsIsTheMiddleOfTheMonitor) {
    for (const bool managed : {false, true}) {
        const auto manager = managed ? desktop.startWindowManager() : nullptr;
        for (size_t i = 0; i < GetParam().monitors.size(); ++i) {
            SCOPED_TRACE(testing::Message() << "monitor " << i << ", managed " << managed);
            const Area& monitor = GetParam().monitors[i];
            ASSERT_NO_FATAL_FAILURE(start());
            ASSERT_NO_FATAL_FAILURE(openMenu(i));
            desktop.input.strike(downKey, 5);
            desktop.input.strike(returnKey);
            Area area;
            ASSERT_TRUE(await([&] {
                for (const ScreenWindow& window : desktop.screen.windows()) {
                    const bool isOurs = managed == window.className.empty();
                    if (!window.viewable || window.overrideRedirect || !isOurs ||
                        window.area.width < 500)
                        continue;
                    area = window.area;
                    return true;
                }
                return false;
            }));
            EXPECT_NEAR(area.x + area.right(), monitor.x + monitor.right(), 4);
            EXPECT_TRUE(monitor.contains(area)) << area;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, Placement, testing::ValuesIn(cases()),
                         [](const auto& each) { return std::string(each.param.name); });
