#include "Harness/OnDesktop.h"

#include <csignal>
#include <fstream>

using namespace Harness;

namespace {

struct Store : OnDesktop {
    /// Where the buttons stand, from left to right, of a program that is started anew.
    std::vector<Area> buttons() {
        start();
        return {agent->buttons().at(0).area, agent->buttons().at(1).area};
    }

    std::string text() const {
        std::ifstream stream(file);
        return {std::istreambuf_iterator(stream), {}};
    }
    void write(const std::string& text) const { std::ofstream(file, std::ios::trunc) << text; }

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
    desktop.input.drag(usual.front(), {{1000, 700}, {200, 300}});
    EXPECT_SOON(text().find("buttonSpot") != std::string::npos);
    agent->process().send(SIGKILL);
    ASSERT_TRUE(agent->process().awaitEnd());
    EXPECT_EQ(buttons().front(), (Area{6, 278, 44, 44}));

    const std::string sound = text();
    const std::string key = sound.substr(0, sound.rfind('=') + 1);
    for (const char* value : {"left, 0.5", "@Variant(\\0\\0\\0\\t\\xff\\xff)"}) {
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
