// The status item in trays on the X server and on the session bus.
#include "Harness/NotifierTray.h"
#include "Harness/OnDesktop.h"
#include "Harness/ScreenReader.h"

#include <QDBusArgument>

#include <algorithm>
#include <filesystem>
#include <fstream>

using namespace Harness;

namespace {

/// Its pictures, by their width.
std::map<int, QByteArray> iconOf(const NotifierTray& tray) {
    std::map<int, QByteArray> pictures;
    const auto argument = tray.property("IconPixmap").value<QDBusArgument>();
    for (argument.beginArray(); !argument.atEnd();) {
        int width, height;
        QByteArray pixels;
        argument.beginStructure();
        argument >> width >> height >> pixels;
        argument.endStructure();
        EXPECT_EQ(pixels.size(), width * height * 4);
        pictures[width] = pixels;
    }
    return pictures;
}

/// The eye is told from the crossed-out one by what a user sees and hears.
struct Told {
    const char* next; ///< What a click does.
    bool crossedOut;
};
constexpr Told clear = {"Blur every screen", true};
constexpr Told blurred = {"Show the screens", false};

constexpr const char* tip =
    "Nimbrel Lite: click to blur or show every screen, right-click for the menu";

} // namespace

TEST(TrayOnTheBus, HasTheItemEachTimeThatItComes) {
    Desktop desktop;
    desktop.tray.reset();
    // The desktop's own pictures of it come first.
    const auto icons = std::filesystem::path(desktop.environment().at("XDG_DATA_HOME")) /
                       "icons/hicolor/16x16/status";
    std::filesystem::create_directories(icons);
    std::ofstream(icons / "com.vardek.NimbrelLite.eye.slash-symbolic.svg") << "<svg/>";
    Agent agent(desktop);
    for (int i = 0; i < 5; ++i) {
        NotifierTray tray(desktop.bus->address());
        ASSERT_SOON(!tray.items().empty()) << i;
        EXPECT_EQ(tray.property("IconName"), "com.vardek.NimbrelLite.eye.slash-symbolic");
        EXPECT_FALSE(tray.property("Menu").isValid()) << "one that would lie under the cover";
        EXPECT_EQ(tray.property("ItemIsMenu"), false);
        for (const Told& state : {clear, blurred}) {
            EXPECT_SOON(tray.property("Title") == QString("Nimbrel Lite: ") + state.next);
            EXPECT_EQ(tray.property("IconAccessibleDesc").toString(), state.next);
            // The line through the eye alone reaches so near to the corner.
            for (const int size : {16, 22, 24, 32, 44, 48, 64}) {
                const int inward = size * 3 / 16 - 1;
                const auto pixel = iconOf(tray)[size].sliced((inward * size + inward) * 4, 4);
                EXPECT_EQ(pixel.at(0) != 0, state.crossedOut) << size;
            }
            tray.click(1000, 10);
            EXPECT_SOON(agent.isCovered() == state.crossedOut) << i;
        }
    }
}

TEST(TrayOnTheBus, StandsBackForOneOnTheServerThatIsNoGoBetween) {
    for (const std::string name : {"XFCE", "KDE", "LXQt"}) {
        const bool isGoBetween = name != "XFCE";
        Desktop desktop;
        desktop.extra["XDG_CURRENT_DESKTOP"] = name;
        NotifierTray tray(desktop.bus->address());
        desktop.tray.reset();
        const Agent agent(desktop);
        const auto isOnBus = [&] { return tray.property("Status") == "Active"; };
        for (int i = 0; i < 2; ++i) {
            EXPECT_SOON(isOnBus());
            desktop.tray.emplace(desktop.display(), 100, 0);
            const auto isAsWanted = [&] {
                return isOnBus() == isGoBetween && desktop.tray->icons().empty() == isGoBetween;
            };
            EXPECT_TRUE(await(isAsWanted) && holdsFor(100ms, isAsWanted)) << name;
            desktop.tray.reset();
        }
    }
}

struct TrayOnTheServer : OnDesktop {
    Area icon() { return desktop.tray->icons().back(); }
};

TEST_F(TrayOnTheServer, HasAnIconThatStandsOutAndTellsTheStateAsTheButtonsDo) {
    const ScreenReader reader(desktop);
    const auto called = [&](const std::string& name) {
        auto all = reader.windows();
        std::erase_if(all, [&](const auto& each) { return each.line() != "push button " + name; });
        std::ranges::sort(all, {}, [](const auto& each) { return each.description != tip; });
        return all;
    };
    size_t pressed = 0;
    for (const uint32_t ground : {0x202020u, 0xF0F0F0u}) {
        desktop.tray.emplace(desktop.display(), 100, 0, ground);
        if (!agent) agent.emplace(desktop);
        ASSERT_SOON(!desktop.tray->icons().empty());
        for (const Told& state : {clear, blurred, clear}) {
            const std::string name = '"' + std::string(state.next) + '"';
            ASSERT_SOON(called(name).size() == 3) << name;
            EXPECT_EQ(called(name)[0].description, tip);
            EXPECT_TRUE(!state.crossedOut || await([&] {
                const Area at = icon();
                const Picture picture = desktop.screen.grab(at);
                const int ink = picture.luminance(at.x + 4, at.y + 4);
                return picture.at(at.x, at.y) == ground && picture.count(ground) > 250 &&
                       (ground > 0x808080 ? ink < 60 : ink > 200);
            }));
            reader.press(called(name)[pressed++ % 3]);
            expectCovered(state.crossedOut);
        }
        agent->uncover();
    }
}

TEST_F(TrayOnTheServer, AnswersToTheReleaseOnIt) {
    ASSERT_NO_FATAL_FAILURE(start());
    const auto at = [&](int beside) { desktop.input.move(icon().x + 12 + beside, icon().y + 12); };
    const auto isQuiet = [&] { return agent->visibleCovers().empty() && agent->menus().empty(); };
    for (const uint8_t button : {1, 3}) {
        at(0);
        desktop.input.press(button);
        at(-100); // Dragged off,
        desktop.input.release(button);
        EXPECT_FOR(200ms, isQuiet());
        at(0);
        desktop.input.press(button);
        at(-100); // and back again.
        at(0);
        EXPECT_FOR(200ms, isQuiet());
        desktop.input.release(button);
        EXPECT_SOON(agent->isCovered() || agent->menus().size() == 1);
        at(4);
        desktop.input.click(button); // On the icon of an open menu, that closes it.
        EXPECT_SOON(isQuiet());
        EXPECT_FOR(200ms, isQuiet());
    }
}
