#include "Harness/Agent.h"
#include "Harness/Await.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

struct Store : testing::Test {
    Store() : file(desktop.environment()["XDG_CONFIG_HOME"] + "/com.vardek.NimbrelLite.ini") {}

    /// Where the buttons stand, from left to right. Waits for all of them.
    std::vector<Area> buttons() const {
        std::vector<Area> areas;
        const auto look = [&] {
            areas.clear();
            for (const ScreenWindow& window : desktop.screen.windows())
                if (window.viewable && window.instance.starts_with("button:"))
                    areas.push_back(window.area);
            return areas.size() == desktop.screen.monitors().size();
        };
        EXPECT_TRUE(await(look));
        std::ranges::sort(areas, {}, &Area::x);
        return areas;
    }

    std::string text() const {
        std::ifstream stream(file);
        return {std::istreambuf_iterator(stream), {}};
    }
    void write(const std::string& text) const { std::ofstream(file, std::ios::trunc) << text; }

    /// Drags a button to a place and waits until that is stored.
    void drag(const Area& button, int x, int y) const {
        const std::string before = text();
        desktop.input.move(button.x + button.width / 2, button.y + button.height / 2);
        desktop.input.press(1);
        for (const int step : {10, 20}) // A drag begins with a little way.
            desktop.input.move(button.x + step, button.y);
        desktop.input.move(x, y);
        desktop.input.release(1);
        EXPECT_TRUE(await([&] { return text() != before; }));
    }

    Desktop desktop;
    const std::filesystem::path file;
};

} // namespace

TEST_F(Store, IsNotTouchedByAStart) {
    {
        Agent agent(desktop);
        buttons();
    }
    EXPECT_TRUE(std::filesystem::is_empty(file.parent_path()));
}

TEST_F(Store, LosesTheFormerSettingsAtAStartAndNothingElse) {
    write("[General]\nstrength=3\nloginAsked=true\nstyle=dark\n[Other]\nstyle=kept\n");
    Agent agent(desktop);
    buttons();
    EXPECT_EQ(text(), "[General]\nloginAsked=true\n[Other]\nstyle=kept\n");
}

TEST_F(Store, KeepsTheButtonsInTheirPlacesWhateverEndsTheProgram) {
    std::vector<Area> placed;
    {
        Agent agent(desktop);
        drag(buttons().front(), 200, 300);
        agent.process().send(SIGKILL);
        ASSERT_TRUE(agent.process().awaitEnd());
    }
    {
        Agent agent(desktop);
        placed = buttons();
        EXPECT_LT(placed.front().x, 100);
        EXPECT_LT(std::abs(placed.front().y + placed.front().height / 2 - 300), 30);
    }
    Agent agent(desktop);
    EXPECT_EQ(buttons(), placed);
}

TEST_F(Store, NeverKeepsTheProgramFromItsWork) {
    std::vector<Area> usual;
    {
        Agent agent(desktop);
        usual = buttons();
        drag(usual.front(), 200, 300);
        agent.process().send(SIGKILL);
        ASSERT_TRUE(agent.process().awaitEnd());
    }
    const std::string sound = text();
    const std::string key = sound.substr(0, sound.rfind('=') + 1);
    for (const char* value :
         {"", "left, 0.5", "0", "0, 0.5, 1", "@Variant(\\0\\0\\0\\t\\xff\\xff)"}) {
        write(key + value);
        Agent agent(desktop);
        EXPECT_EQ(buttons(), usual) << value;
    }
    // These are numbers, and taken as they are.
    for (const char* value :
         {"nan, nan", "0, inf", "-inf, -inf", "1, 1e300", "0, -1e18", "0, 2e9"}) {
        write(key + value);
        Agent agent(desktop);
        agent.cover();
        agent.uncover();
    }
}
