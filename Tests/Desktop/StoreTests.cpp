#include "Harness/OnDesktop.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

using namespace Harness;

namespace {

struct Store : OnDesktop {
    /// Where the buttons stand, from left to right, of a program that is started anew.
    std::vector<Area> buttons() {
        agent.reset();
        start();
        std::vector<Area> areas;
        for (const ScreenWindow& window : agent->buttons())
            areas.push_back(window.area);
        return areas;
    }

    std::string text() const {
        std::ifstream stream(file);
        return {std::istreambuf_iterator(stream), {}};
    }
    void write(const std::string& text) const { std::ofstream(file, std::ios::trunc) << text; }

    /// Drags the first button to a place, and ends the program once that is stored.
    void drag(int x, int y) const {
        const Area button = agent->buttons().at(0).area;
        desktop.input.move(button.x + button.width / 2, button.y + button.height / 2);
        desktop.input.press(1);
        for (const int step : {10, 20}) // A drag begins with a little way.
            desktop.input.move(button.x + step, button.y);
        desktop.input.move(x, y);
        desktop.input.release(1);
        EXPECT_TRUE(await([&] { return text().find("buttonSpot") != std::string::npos; }));
    }

    const std::filesystem::path file =
        desktop.environment()["XDG_CONFIG_HOME"] + "/com.vardek.NimbrelLite.ini";
};

} // namespace

TEST_F(Store, IsNotTouchedByAStartButForTheFormerSettings) {
    buttons();
    EXPECT_TRUE(std::filesystem::is_empty(file.parent_path()));
    write("[General]\nstrength=3\nloginAsked=true\nstyle=dark\n[Other]\nstyle=kept\n");
    buttons();
    EXPECT_EQ(text(), "[General]\nloginAsked=true\n[Other]\nstyle=kept\n");
}

TEST_F(Store, KeepsTheButtonsInTheirPlacesAndTheProgramAtItsWork) {
    const auto usual = buttons();
    drag(200, 300);
    agent->process().send(SIGKILL);
    ASSERT_TRUE(agent->process().awaitEnd());
    const auto placed = buttons();
    EXPECT_LT(placed.front().x, 100);
    EXPECT_LT(std::abs(placed.front().y + placed.front().height / 2 - 300), 30);

    const std::string sound = text();
    const std::string key = sound.substr(0, sound.rfind('=') + 1);
    for (const char* value : {"left, 0.5", "0, 0.5, 1", "@Variant(\\0\\0\\0\\t\\xff\\xff)"}) {
        write(key + value);
        EXPECT_EQ(buttons(), usual) << value;
    }
    // These are numbers, and taken as they are.
    for (const char* value : {"nan, nan", "0, inf", "-inf, -inf", "1, 1e300"}) {
        write(key + value);
        agent.reset();
        agent.emplace(desktop);
        agent->cover();
        agent->uncover();
    }
}
