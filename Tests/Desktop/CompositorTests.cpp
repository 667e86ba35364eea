// What the user sees is what the program says, whatever composites the screen.
#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Keys.h"
#include "Harness/TestWindow.h"

#include <QDBusInterface>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <thread>

#include <gtest/gtest.h>

#include <xcb/composite.h>
#include <xcb/shape.h>

using namespace Harness;

namespace {

using Command = std::vector<std::string>;

struct Compositor {
    std::string name;
    Command command;
    bool manages = true;    ///< It is the window manager too, and can be replaced.
    int looks = 0;          ///< In a row, that find something as it appears.
    bool drawsOver = false; ///< Over the overlay too.
    /// It sees no output of the test's server but the first, and of the windows that are older than
    /// itself only those that it manages.
    bool isGtk = false;
    bool isKWin = false;
    bool isGnome = false;
    bool isGlPicom = false;
};

void PrintTo(const Compositor& compositor, std::ostream* out) { *out << compositor.name; }

Compositor picom(const std::string& name, const Command& settings,
                 const std::string& file = "/dev/null") {
    const bool isGl = settings.front() == "glx";
    Compositor result = {.name = name,
                         .command = {"picom", "--config", file, "--backend"},
                         .manages = false,
                         .looks = isGl ? 0 : 5,
                         .drawsOver = !isGl,
                         .isGlPicom = isGl};
    result.command.insert(result.command.end(), settings.begin(), settings.end());
    return result;
}

constexpr int sharp = 10;  ///< No blurred picture has such a step between neighbours.
constexpr int clear = 100; ///< All that lies below has one, through what is translucent too.

struct Stage {
    Stage(const Compositor& its, std::unique_ptr<XServer> server)
        : compositor(its), desktop(std::move(server)),
          paper(desktop.display(), desktop.screen.bounds(),
                its.isGtk ? TestWindow::Kind::Managed : TestWindow::Kind::Popup) {
        desktop.extra = {{"LIBGL_ALWAYS_SOFTWARE", "1"}, {"KWIN_COMPOSE", "O2"}};
        // But for where the buttons stand.
        for (const Area& monitor : desktop.screen.monitors())
            looked.push_back({monitor.x + 8, 0, monitor.width - 128, monitor.height});
        if (!compositor.manages) manager = desktop.startWindowManager();
        if (compositor.isGnome) startLogind();
        start();
        if (compositor.isGnome) leaveOverview();
        paper.paintChecks(8);
        paper.lower();
        paper.show();
    }

    ~Stage() { QDBusConnection::disconnectFromBus(bus.name()); }

    void start(const Command& more = {}) {
        Command command = compositor.command;
        command.insert(command.end(), more.begin(), more.end());
        process = desktop.startCompositor(command);
        expectReady();
    }
    void expectReady() const {
        // Until it is about to draw nothing tells it from one that draws over the overlay.
        EXPECT_SOON(!compositor.isGlPicom ||
                    desktop.screen.holdingsOf(process->pid())["GLXContext"] > 0);
        // One that is killed before it knows that it can draw never tries again.
        EXPECT_SOON(!compositor.isKWin || kwin().property("active").toBool());
    }
    QDBusInterface kwin() const {
        return QDBusInterface("org.kde.KWin", "/Compositor", "org.kde.kwin.Compositing", bus);
    }

    /// GNOME's Shell does not start without it.
    void startLogind() {
        desktop.extra["DBUS_SYSTEM_BUS_ADDRESS"] = system.emplace().address().toStdString();
        const Command mock = {"/usr/bin/python3", "-m", "dbusmock", "--system", "-t", "logind"};
        logind = std::make_unique<Process>(mock, desktop.environment());
    }

    /// It begins with it, and no other program gets a key meanwhile.
    void leaveOverview() const {
        const auto shell = [&] {
            return QDBusInterface("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell", bus);
        };
        EXPECT_SOON(shell().property("OverviewActive").toBool());
        shell().setProperty("OverviewActive", false);
        EXPECT_SOON(!shell().property("OverviewActive").toBool());
    }

    bool shows(const Area& area) const { return desktop.screen.grab(area).sharpestStep() > sharp; }

    /// The sharpest step that a look along some lines finds.
    int sharpest(const Screen& screen) const {
        int step = 0;
        for (const Area& area : looked)
            for (int y = area.y; y < area.bottom(); y += 24)
                step = std::max(step, screen.grab({area.x, y, area.width, 1}).sharpestStep());
        return step;
    }
    bool isCovered() const { return sharpest(desktop.screen) <= sharp; }
    bool isClear() const { return sharpest(desktop.screen) > clear; }

    /// Looks all the while and a little longer.
    void watch(const char* what, const std::function<void()>& work) const {
        std::atomic<size_t> looks = 0;
        int inARow = 0;
        int longest = 0;
        std::jthread eye([&](const std::stop_token& ends) {
            const Screen screen(desktop.display());
            for (; !ends.stop_requested(); ++looks) {
                inARow = sharpest(screen) > sharp ? inARow + 1 : 0;
                longest = std::max(longest, inARow);
            }
        });
        work();
        const auto end = Clock::now() + 300ms;
        await([&, enough = looks + 30] { return Clock::now() > end && looks > enough; });
        eye.request_stop();
        eye.join();
        EXPECT_LE(longest, compositor.looks) << what;
    }

    const Compositor& compositor;
    Desktop desktop;
    QDBusConnection bus = QDBusConnection::connectToBus(desktop.bus->address(), "stage");
    TestWindow paper;
    std::vector<Area> looked;
    std::optional<SessionBus> system;
    std::unique_ptr<Process> logind;
    std::unique_ptr<Process> manager;
    std::unique_ptr<Process> process;
};

/// Where a compositor shows what it draws, and takes input for what it draws itself.
struct OverlayWindow {
    explicit OverlayWindow(const XClient& its) : client(its) {
        number = client
                     .ask(xcb_composite_get_overlay_window_reply,
                          xcb_composite_get_overlay_window(client, client.root()))
                     ->overlay_win;
    }
    ~OverlayWindow() { xcb_composite_release_overlay_window(client, client.root()); }

    void takeInput(const xcb_rectangle_t& area) const {
        xcb_shape_rectangles(client, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
                             XCB_CLIP_ORDERING_UNSORTED, number, 0, 0, 1, &area);
        client.settle();
    }

    const XClient& client;
    xcb_window_t number;
};

struct Composited : testing::TestWithParam<Compositor> {};

} // namespace

TEST_P(Composited, IsWhatTheProgramShows) {
    auto server = XServer::outputs();
    if (!server) GTEST_SKIP() << "no X server with several outputs can start here";
    const Command plug = {"--output", "DUMMY1", "--mode", "1024x768", "--right-of", "DUMMY0"};
    server->xrandr({"--addmode", "DUMMY1", "1024x768"});
    if (!GetParam().isGtk) server->xrandr(plug);
    Stage stage(GetParam(), std::move(server));
    Desktop& desktop = stage.desktop;
    Agent agent(desktop);
    ASSERT_SOON(agent.buttons().size() == stage.looked.size());

    // What stands ready for it may fade in at first, but it never does.
    ASSERT_SOON(stage.isClear());
    desktop.input.strikeChord();
    ASSERT_SOON(stage.isCovered());
    desktop.input.strikeChord();
    ASSERT_SOON(stage.isClear());
    desktop.input.strikeChord();
    int between = 0;
    ASSERT_TRUE(await([&] {
        const int step = stage.sharpest(desktop.screen);
        between += step > sharp && step <= clear;
        return step <= sharp;
    }));
    EXPECT_LE(between, 2);

    TestWindow popup(desktop.display(), {10, 10, 1000, 740});
    popup.paintChecks(6);
    stage.watch("a popup", [&] { popup.show(); });
    for (const ScreenWindow& each : agent.buttons())
        EXPECT_TRUE(await([&] {
            return stage.shows({each.area.x, each.area.y, 40, each.area.height});
        })) << each.area;
    agent.openMenu();
    const Area menu = agent.menus().at(0).area;
    const Area text = {menu.x, menu.y, 100, menu.height};
    EXPECT_SOON(stage.shows(text));
    desktop.input.strike(escapeKey);
    EXPECT_SOON(!stage.shows(text));
    popup.hide();

    std::optional<OverlayWindow> overlay;
    if (!GetParam().drawsOver) overlay.emplace(stage.paper.client());
    if (overlay) overlay->takeInput({0, 0, 1024, 20}); // As for a panel.

    TestWindow window(desktop.display(), {300, 200, 400, 300}, TestWindow::Kind::Managed);
    window.paintChecks(6);
    stage.watch("a window", [&] { window.show(); });
    EXPECT_TRUE(!overlay || desktop.screen.inputRectangles(overlay->number) == 1);
    TestWindow film(desktop.display(), {0, 0, 1024, 768}, TestWindow::Kind::Managed);
    film.paintChecks(6);
    const XClient& client = film.client();
    client.put(film.number(), "_NET_WM_STATE", XCB_ATOM_ATOM,
               {client.atom("_NET_WM_STATE_FULLSCREEN")});
    stage.watch("a full-screen window", [&] { film.show(); });
    stage.watch("a switch of windows", [&] {
        desktop.input.hold(altKey);
        desktop.input.strike(tabKey);
        std::this_thread::sleep_for(200ms);
        desktop.input.letGo(altKey);
    });
    film.hide();
    window.hide();

    // The picture lives on, below where it was before.
    const auto brightness = [&] { return desktop.screen.grab(desktop.screen.bounds()).mean(); };
    const double before = brightness();
    stage.paper.paint(white);
    EXPECT_SOON(brightness() > before + 5);
    stage.paper.paintChecks(8);

    const auto second = stage.looked.back();
    if (!GetParam().isGtk) stage.looked.pop_back();
    stage.watch("a monitor less", [&] {
        desktop.server->xrandr({"--fb", "2048x768", "--output", "DUMMY1", "--off"});
        EXPECT_SOON(agent.isCovered());
    });
    stage.watch("a monitor more", [&] {
        desktop.server->xrandr(plug);
        EXPECT_SOON(agent.isCovered());
    });
    if (!GetParam().isGtk) stage.looked.push_back(second);
    EXPECT_SOON(stage.isCovered());

    if (GetParam().isKWin) {
        stage.watch("suspended", [&] { stage.kwin().call("suspend"); });
        stage.watch("resumed", [&] { stage.kwin().call("resume"); });
    }
    if (GetParam().manages)
        stage.watch("replaced", [&] {
            const auto former = std::move(stage.process);
            stage.start({"--replace"});
            EXPECT_TRUE(former->awaitEnd());
            stage.expectReady(); // It may have been the former that said so.
        });
    stage.watch("killed", [&] {
        stage.process->send(SIGKILL);
        EXPECT_SOON(desktop.screen.selectionOwner("_NET_WM_CM_S0") == XCB_NONE);
        const auto inputs = [&] { return desktop.screen.inputRectangles(overlay->number); };
        EXPECT_TRUE(!overlay || await([&] { return inputs() == 0; }));
    });
    stage.watch("started", [&] { stage.start(); });

    desktop.input.strikeChord();
    EXPECT_SOON(stage.isClear());
}

INSTANTIATE_TEST_SUITE_P(
    By, Composited,
    testing::Values(
        Compositor{.name = "KWin", .command = {"kwin_x11"}, .isKWin = true},
        Compositor{.name = "Xfwm", .command = {"xfwm4", "--compositor=on"}, .isGtk = true},
        picom("PicomTranslucent", {"xrender", "-i", "0.9", "--inactive-opacity-override",
                                   "--fading", "--corner-radius", "20"}),
        picom("PicomGl", {"glx", "--fading", "--shadow"})),
    [](const auto& each) { return each.param.name; });

// For the long run.
INSTANTIATE_TEST_SUITE_P(
    Each, Composited,
    testing::Values(
        Compositor{.name = "Marco",
                   .command = {"marco", "--composite"},
                   .looks = 30,
                   .drawsOver = true,
                   .isGtk = true},
        Compositor{.name = "Muffin", .command = {"muffin"}},
        Compositor{.name = "Gnome", .command = {"gnome-shell", "--x11"}, .isGnome = true},
        picom("Picom", {"xrender"}), picom("PicomActive", {"xrender", "--active-opacity", "0.85"}),
        picom("PicomDim", {"xrender", "--inactive-dim", "0.5"}),
        picom("PicomRule", {"xrender", "--opacity-rule", "80:width > 0"}),
        picom("PicomGlTranslucent",
              {"glx", "-i", "0.9", "--inactive-opacity-override", "--corner-radius", "20"}),
        picom("PicomSample", {"xrender"}, "/usr/share/doc/picom/examples/picom.sample.conf")),
    [](const auto& each) { return each.param.name; });
