// How the program's windows look, compared with pictures of them that were found good.

#include "Harness/OnDesktop.h"
#include "Harness/Paper.h"
#include "Harness/Portal.h"
#include "Harness/SettingsManager.h"

#include <QDir>
#include <QImage>

#include <fstream>

using namespace Harness;

namespace {

constexpr uint32_t paperColour = 0x4682B4;
constexpr uint32_t solid = 0x0E1015; ///< The cover where contrast is wished for.

/// Empty where the pictures look alike. A newer toolkit may round an edge in another way.
std::string complaint(const QImage& actual, const QImage& expected) {
    constexpr int tolerable = 40;
    constexpr double tolerableMean = 0.375;
    if (actual.size() != expected.size()) return "another size";
    int worst = 0;
    double sum = 0;
    for (qsizetype i = 0; i < actual.sizeInBytes(); ++i) { // The fourth byte is the same in all.
        const int here = std::abs(actual.constBits()[i] - expected.constBits()[i]);
        worst = std::max(worst, here);
        sum += here;
    }
    const double mean = sum / static_cast<double>(actual.sizeInBytes());
    if (worst <= tolerable && mean <= tolerableMean) return {};
    return "a byte differs by " + std::to_string(worst) + ", all by " + std::to_string(mean);
}

/// That the area comes to look like the picture of this name; else it is put where it can be seen.
void expectLook(const Screen& screen, const Area& area, const std::string& name) {
    const QString file = QString::fromStdString(name + ".png");
    const auto expected =
        QImage(QDir(PICTURES).filePath(file)).convertToFormat(QImage::Format_ARGB32);
    QImage actual;
    EXPECT_TRUE(await([&] {
        actual = screen.grab(area).image().convertToFormat(QImage::Format_ARGB32);
        return complaint(actual, expected).empty();
    })) << name
        << ": " << complaint(actual, expected) << "; see " << FOUND_PICTURES;
    if (testing::Test::HasFailure() && QDir().mkpath(FOUND_PICTURES))
        actual.save(QDir(FOUND_PICTURES).filePath(file));
}

/// One monitor, high enough for a window of twice its size, all of one colour.
struct Showcase {
    explicit Showcase(const char* scale = "1") {
        desktop.extra = {{"QT_SCALE_FACTOR", scale}};
        agent.emplace(desktop);
        EXPECT_SOON(agent->buttons().size() == 1);
    }

    void openMenu() {
        Area icon = desktop.tray->icons().back();
        icon.x += m_aside = -m_aside; // Two quick clicks on one spot are a double click.
        desktop.input.click(icon, 3);
        ASSERT_SOON(agent->menus().size() == 1);
        desktop.input.move(5, 5);
    }
    /// Opens what stands so many rows down in the menu, the only window then.
    void choose(int row) {
        ASSERT_NO_FATAL_FAILURE(openMenu());
        desktop.input.strike(downKey, row);
        desktop.input.strike(returnKey);
        ASSERT_SOON(agent->menus().empty() && agent->windows().size() == 1);
    }

    Desktop desktop{XServer::framebuffer({"-screen", "0", "3200x1800x24"})};
    Paper paper{desktop, paperColour};
    Portal portal{desktop.bus->address(), false};
    std::optional<Agent> agent;

private:
    int m_aside = 5;
};

struct WindowLooks : testing::TestWithParam<bool>, Showcase {
    WindowLooks() : Showcase(GetParam() ? "2" : "1") {}

    /// As the desktop is dark, and light again.
    void expectLooks(const ScreenWindow& window, const std::string& what) {
        for (const char* scheme : {"Light", "Dark", "Light"}) {
            portal.setDark(scheme == std::string("Dark"));
            expectLook(desktop.screen, window.area,
                       scheme + std::string(GetParam() ? "Double" : "") + what);
        }
    }
    void expectWindow(const std::string& what) {
        ASSERT_SOON(agent->menus().empty() && agent->windows().size() == 1);
        const ScreenWindow window = agent->windows()[0];
        expectLooks(window, what);
        EXPECT_EQ(agent->windows().at(0).number, window.number);
    }
    void close() {
        paper.client().askToClose(agent->windows().at(0).number);
        ASSERT_SOON(agent->windows().empty());
    }
};

struct ButtonLooks : testing::TestWithParam<std::tuple<const char*, bool>> {
    const char* const scale = std::get<0>(GetParam());
    const bool composited = std::get<1>(GetParam());
};

template <class Info> std::string nameOf(const Info& info) {
    const auto& [scale, composited] = info.param;
    return "Scale" + letters(scale) + (composited ? "Composited" : "Plain");
}

} // namespace

TEST_P(WindowLooks, AreTheOnesThatWereFoundGood) {
    ASSERT_NO_FATAL_FAILURE(openMenu());
    expectLooks(agent->menus().at(0), "Menu");
    desktop.input.strike(downKey, 4);
    desktop.input.strike(rightKey);
    ASSERT_SOON(agent->menus().size() == 2);
    desktop.input.strike(returnKey);
    ASSERT_NO_FATAL_FAILURE(expectWindow("Alert"));
    desktop.input.strike(escapeKey);
    ASSERT_SOON(agent->windows().empty());

    for (const auto& [row, name] : {std::pair{3, "Summit"}, {6, "About"}}) {
        ASSERT_NO_FATAL_FAILURE(choose(row));
        ASSERT_NO_FATAL_FAILURE(expectWindow(name));
        ASSERT_NO_FATAL_FAILURE(close());
    }
    ASSERT_NO_FATAL_FAILURE(choose(5));
    ASSERT_NO_FATAL_FAILURE(expectWindow("General"));
    const Area settings = agent->windows().at(0).area;
    const int scale = GetParam() ? 2 : 1;
    desktop.input.click({settings.x + settings.width / 2 + 36 * scale, settings.y + 28 * scale});
    desktop.input.move(5, 5);
    ASSERT_NO_FATAL_FAILURE(expectWindow("Support"));
}

INSTANTIATE_TEST_SUITE_P(All, WindowLooks, testing::Bool(),
                         [](const auto& each) { return each.param ? "Double" : "Single"; });

TEST(Scheme, AndContrastChangeWhileCovered) {
    Showcase showcase;
    ASSERT_NO_FATAL_FAILURE(showcase.choose(3));
    const Screen& screen = showcase.desktop.screen;
    const ScreenWindow window = showcase.agent->windows().back();
    const auto isSolid = [&] { return screen.grab({100, 100, 200, 200}).isAll(solid); };
    showcase.agent->cover();
    for (const bool contrast : {true, false, true, false})
        for (const char* scheme : {"Dark", "Light"}) {
            showcase.portal.setHighContrast(contrast);
            showcase.portal.setDark(scheme == std::string("Dark"));
            EXPECT_SOON(isSolid() == contrast);
            expectLook(screen, window.area, std::string(scheme) + "Summit");
            EXPECT_TRUE(showcase.agent->isCovered());
        }
    SettingsManager manager(showcase.desktop); // It counts where the portal knows of no wish.
    for (int i = 0; i < 2; ++i) {
        manager.tell("Net/IconThemeName \"Tango\"\nNet/ThemeName \"HighContrast\"");
        EXPECT_SOON(isSolid()) << i;
        manager.tell("Net/ThemeName \"Xfce\"\nGdk/WindowScalingFactor 1");
        EXPECT_SOON(!isSolid()) << i;
    }
}

TEST_F(OnDesktop, TheSchemeIsTheToolkitsWhereNothingElseTells) {
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

TEST_P(ButtonLooks, AreTheOnesThatWereFoundGood) {
    Desktop desktop;
    desktop.extra = {{"QT_SCALE_FACTOR", scale}};
    const Paper paper(desktop, paperColour);
    desktop.input.move(960, 300);
    const auto compositor = composited ? desktop.startCompositor() : nullptr;
    Agent agent(desktop);
    ASSERT_SOON(agent.buttons().size() == 2);

    const auto expectState = [&](const char* state) {
        constexpr int around = 12; // So many points around the disc belong to the picture.
        const int margin = static_cast<int>((composited ? 0 : around) * std::atof(scale));
        Area area = agent.buttons()[1].area.grown(margin);
        area.width = std::min(area.width, desktop.screen.bounds().width - area.x);
        expectLook(desktop.screen, area, nameOf(testing::TestParamInfo(GetParam(), 0)) + state);
    };
    expectState("Awake");
    expectState("Dim");
    agent.cover();
    expectState("Blurred");
}

INSTANTIATE_TEST_SUITE_P(All, ButtonLooks,
                         testing::Combine(testing::Values("1", "1.25", "2"), testing::Bool()),
                         [](const auto& each) { return nameOf(each); });
