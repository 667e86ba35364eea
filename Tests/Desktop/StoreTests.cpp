#include "Harness/OnDesktop.h"

#include <fstream>

using namespace Harness;

TEST_F(OnDesktop, TheStoreIsTouchedForFormerSettingsAloneAndMayHoldAnything) {
    const std::filesystem::path file =
        desktop.environment()["XDG_CONFIG_HOME"] + "/com.vardek.NimbrelLite.ini";
    const auto write = [&](const std::string& text) { std::ofstream(file) << text; };
    const auto text = [&] {
        std::ifstream stream(file);
        return std::string(std::istreambuf_iterator(stream), {});
    };
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_TRUE(std::filesystem::is_empty(file.parent_path()));
    const Area usual = agent->buttons()[0].area;
    desktop.input.drag(usual, {{1000, 700}, {200, 300}});
    ASSERT_SOON(text().find("buttonSpot") != std::string::npos);
    const std::string key = text().substr(0, text().rfind('=') + 1);
    // Those that are numbers are taken as they are.
    for (const char* value : {"nan, nan", "0, inf", "-inf, -inf", "1, 1e300"}) {
        write(key + value);
        agent.reset();
        agent.emplace(desktop);
        agent->cover();
        agent->uncover();
    }
    for (const char* value : {"\"0, 0.5\"", "0, 0.5, 1", "0, 0.5 m"}) {
        write(key + value);
        ASSERT_NO_FATAL_FAILURE(start());
        EXPECT_EQ(agent->buttons()[0].area, usual) << value;
    }
    write(key + "left, 0.5\nstrength=3\nstyle=1\nloginAsked=true\n[Other]\nstyle=kept\n");
    ASSERT_NO_FATAL_FAILURE(start());
    EXPECT_EQ(agent->buttons()[0].area, usual);
    EXPECT_EQ(text(), key + "left, 0.5\nloginAsked=true\n[Other]\nstyle=kept\n");
}
