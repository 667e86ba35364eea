// The program in GNOME on Wayland: a real Shell with the extension, on two monitors that no screen
// shows, with a neighbour of Wayland and one of X11.
#include "Harness/Agent.h"
#include "Harness/Await.h"
#include "Harness/Input.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QJsonArray>
#include <QJsonDocument>

#include <csignal>
#include <filesystem>

#include <gtest/gtest.h>

using namespace Harness;

namespace {

constexpr int sharp = 20;  ///< No blurred picture has such a step, where a button is left out.
constexpr int clear = 100; ///< All that the neighbours show has one.
constexpr Area left = {0, 0, 1280, 720};
constexpr Area right = {1280, 0, 1024, 768};
constexpr uint8_t upKey = 111;
const QString icon = "Main.panel.statusArea['com.vardek.NimbrelLite.Shell']";

struct Gnome : testing::Test, Hand {
    Gnome() {
        home.make("config/glib-2.0/settings");
        enable("nimbrel-lite-43@vardek.com");
        std::filesystem::create_directory_symlink(EXTENSIONS,
                                                  home.make("data/gnome-shell") / "extensions");
    }
    ~Gnome() override {
        program.reset();
        EXPECT_EQ(shell ? shell->errors().find("Nimbrel") : std::string::npos, std::string::npos)
            << shell->errors();
        QDBusConnection::disconnectFromBus(bus.address());
    }

    void enable(const std::string& extension) const {
        home.write("config/glib-2.0/settings/keyfile",
                   "[org/gnome/shell]\nwelcome-dialog-last-shown-version='99'\n"
                   "enabled-extensions=['" +
                       extension + "']\n");
    }

    void startShell() {
        shell.reset();
        shell.emplace(std::vector<std::string>{"gnome-shell", "--headless", "--unsafe-mode",
                                               "--wayland-display", "wayland-g",
                                               "--virtual-monitor", "1280x720", "--virtual-monitor",
                                               "1024x768"},
                      environment);
        ASSERT_TRUE(await([&] { return is("!Main.layoutManager._startingUp"); }, 60s))
            << shell->errors();
        for (const char* name : {"DISPLAY", "XAUTHORITY", "WAYLAND_DISPLAY"})
            environment[name] =
                js(QString("imports.gi.GLib.getenv('%1')").arg(name)).toString().toStdString();
        js("globalThis.seat = imports.gi.Clutter.get_default_backend().get_default_seat()");
        js("globalThis.now = () => imports.gi.GLib.get_monotonic_time()");
        js("globalThis.mouse = seat.create_virtual_device(0)");
        js("globalThis.keys = seat.create_virtual_device(1)");
        js("globalThis.found = global.stage.get_children().length");
        js("Main.overview.hide()");
        ASSERT_SOON(is("!Main.overview.visible"));
    }
    void startProgram() {
        program.reset();
        program.emplace(Agent::command(), environment);
        ASSERT_SOON(windows("button").size() == 2 && is(icon + " !== undefined"))
            << program->errors();
    }
    /// All of it, with a neighbour on each monitor.
    void startAll() {
        startShell();
        for (const Area& area : {left, right}) {
            move(area.middle());
            const auto* const platform = area == left ? "wayland" : "xcb";
            editors.push_back(std::make_unique<Process>(
                std::vector<std::string>{EDITOR, "14", "-platform", platform}, environment));
            ASSERT_SOON(grab(area).mean() > 150 && hears(*editors.back()));
        }
        startProgram();
        ASSERT_TRUE(isClear());
    }

    /// Of an expression in the Shell.
    QJsonValue js(const QString& expression) const {
        auto question = QDBusMessage::createMethodCall("org.gnome.Shell", "/org/gnome/Shell",
                                                       "org.gnome.Shell", "Eval");
        const auto answer = connection.call(question << "[" + expression + "].map(x => x ?? 0)");
        if (answer.type() != QDBusMessage::ReplyMessage) return {};
        const QString text = answer.arguments().at(1).toString();
        EXPECT_TRUE(answer.arguments().at(0).toBool()) << text.toStdString();
        return QJsonDocument::fromJson(text.toUtf8()).array().at(0);
    }
    bool is(const QString& expression) const { return js(expression).toBool(); }
    bool hasKeyboard() const {
        return js("global.display.focus_window?.get_pid()").toInt() == program->pid();
    }
    /// Windows of the program's above the covers, by the beginning of what they are.
    std::vector<Area> windows(const QString& kind) const {
        std::vector<Area> areas;
        for (const auto& each :
             js("global.get_window_actors()"
                ".filter(a => a.get_parent().get_parent().name === 'nimbrel-front')"
                ".map(a => a.meta_window)"
                ".filter(w => w.get_wm_class_instance()?.startsWith('" +
                kind +
                "')).map(w => w.get_frame_rect())"
                ".sort((a, b) => a.x - b.x).map(r => [r.x, r.y, r.width, r.height])")
                 .toArray())
            areas.push_back(areaOf(each));
        return areas;
    }
    static Area areaOf(const QJsonValue& r) {
        return {r[0].toInt(), r[1].toInt(), r[2].toInt(), r[3].toInt()};
    }

    void fake(uint8_t type, uint8_t detail, int x, int y) const override {
        const bool down = type == XCB_KEY_PRESS || type == XCB_BUTTON_PRESS;
        if (type == XCB_MOTION_NOTIFY)
            js(QString("mouse.notify_absolute_motion(now(), %1, %2)").arg(x).arg(y));
        else if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE)
            js(QString("keys.notify_key(now(), %1, %2)").arg(detail - 8).arg(down ? 1 : 0));
        else if (detail <= 3)
            js(QString("mouse.notify_button(now(), %1, %2)").arg(detail).arg(down ? 1 : 0));
        else if (down)
            js("mouse.notify_discrete_scroll(now(), 1, 0)");
    }
    bool notices(const Process& editor, const std::function<void()>& work) const {
        const std::string before = editor.output();
        work();
        return await([&] { return editor.output() != before; });
    }
    bool hears(const Process& editor) const {
        return notices(editor, [&] { strike(aKey); });
    }

    Picture grab(const Area& area = left.joined(right)) const {
        const auto file = home.path() / "picture.png";
        auto question = QDBusMessage::createMethodCall("org.gnome.Shell.Screenshot",
                                                       "/org/gnome/Shell/Screenshot",
                                                       "org.gnome.Shell.Screenshot", "Screenshot");
        connection.call(question << false << false << QString::fromStdString(file));
        const QImage image(QString::fromStdString(file)); // Smaller while a monitor is off.
        const Area all = left.joined(right);
        Picture picture(all, image.copy(0, 0, all.width, all.height));
        for (Area button : windows("button")) {
            const Area& on = button.x < right.x ? left : right; // Its shadow may reach beyond.
            button.width = std::min(button.width, on.right() - button.x);
            picture.erase(button);
        }
        return picture.cut(area);
    }
    bool isClear() const {
        const Picture all = grab();
        return all.cut(left).sharpestStep() > clear && all.cut(right).sharpestStep() > clear;
    }
    bool isCovered() const { // A plain one would be black here.
        const Picture all = grab();
        return all.cut(left).sharpestStep() < sharp && all.cut(right).sharpestStep() < sharp &&
               all.cut(left).mean() > 20 && all.cut(right).mean() > 20;
    }
    bool isSeen(const char* kind) const {
        const auto all = windows(kind);
        return !all.empty() && grab(all.front()).sharpestStep() > clear;
    }
    /// One that has only just come may miss the first.
    void expectAtAClick(const Area& at, const std::function<bool()>& condition) const {
        ASSERT_TRUE((click(at), await(condition, 4s)) || (click(at), await(condition)));
    }
    void cover() const {
        expectAtAClick(windows("button").at(0), [&] { return isCovered(); });
    }
    void openMenu(const Area& at) const {
        click(at, 3);
        ASSERT_SOON(windows("menu").size() == 1 && hasKeyboard());
        ASSERT_SOON(isSeen("menu"));
    }
    Area iconArea() const {
        return areaOf(js("(i => [...i.get_transformed_position(), ...i.get_transformed_size()])(" +
                         icon + ")"));
    }

    Folder home;
    SessionBus bus, system;
    QDBusConnection connection = QDBusConnection::connectToBus(bus.address(), bus.address());
    Environment environment =
        environmentOf(home, bus.address(),
                      {{"DBUS_SYSTEM_BUS_ADDRESS", system.address().toStdString()},
                       {"GSETTINGS_BACKEND", "keyfile"},
                       {"LIBGL_ALWAYS_SOFTWARE", "1"}});
    Process logind{{"/usr/bin/python3", "-m", "dbusmock", "--system", "--template", "logind"},
                   environment};
    std::optional<Process> shell;
    std::vector<std::unique_ptr<Process>> editors;
    std::optional<Process> program;
};

TEST_F(Gnome, NothingIsReadableAndCoversOutlastLockMonitorsAndTheExtension) {
    startAll();
    cover();
    const std::pair<const char*, const char*> views[] = {
        {"Main.panel.statusArea.quickSettings.menu.open()",
         "Main.panel.statusArea.quickSettings.menu.close()"},
        {"Main.notify('MERIDIAN', 'LANTERN')", "1"},
        {"Main.overview.show()", "Main.overview.hide()"},
        {"global.display.focus_window.make_fullscreen()",
         "global.display.focus_window.unmake_fullscreen()"},
        {"Main.magnifier.setActive(true)", "Main.magnifier.setActive(false)"}};
    for (const auto& [show, hide] : views) {
        SCOPED_TRACE(show);
        js(show);
        EXPECT_SOON(isCovered());
        EXPECT_TRUE(isCovered());
        js(hide);
    }
    ASSERT_SOON(is("!Main.overview.visible"));
    for (size_t i = 0; i < editors.size(); ++i) { // Through the cover.
        EXPECT_TRUE(notices(*editors[i], [&] { click(i == 0 ? left : right); }));
        EXPECT_TRUE(hears(*editors[i]));
    }
    EXPECT_TRUE(notices(*editors[1], [&] { click(5); }));
    strikeChord();
    EXPECT_SOON(isClear());
    click(iconArea());
    EXPECT_SOON(isCovered());
    EXPECT_EQ(js(icon + ".accessible_name"), "Show the screens");

    js("Main.sessionMode.pushMode('unlock-dialog')");
    ASSERT_SOON(is("Main.sessionMode.isLocked"));
    const Area button = windows("button").at(0);
    strikeChord();
    click(button);
    EXPECT_TRUE(is("global.stage.get_children().every(a => a.name !== 'nimbrel-covers')"));
    EXPECT_FALSE(is("global.stage.get_children().find(a => a.name === 'nimbrel-front').visible"));
    EXPECT_FALSE(is(icon + ".visible"));
    js("Main.sessionMode.popMode('unlock-dialog')");
    EXPECT_SOON(isCovered());

    const auto setMonitors = [&](const QString& second) {
        js("imports.gi.Gio.DBus.session.call('org.gnome.Mutter.DisplayConfig', "
           "'/org/gnome/Mutter/DisplayConfig', 'org.gnome.Mutter.DisplayConfig', "
           "'ApplyMonitorsConfig', new imports.gi.GLib.Variant('(uua(iiduba(ssa{sv}))a{sv})', [2, "
           "1, [[0, 0, 1, 0, true, [['Meta-0', '1280x720@60.000', {}]]]" +
           second + "], {}]), null, 0, -1, null) && 1");
    };
    setMonitors("");
    ASSERT_SOON(is("Main.layoutManager.monitors.length === 1") && windows("button").size() == 1);
    EXPECT_TRUE(grab(left).sharpestStep() < sharp);
    setMonitors(", [1280, 0, 1, 0, false, [['Meta-1', '1024x768@60.000', {}]]]");
    ASSERT_SOON(is("Main.layoutManager.monitors.length === 2"));
    EXPECT_SOON(isCovered() && windows("button").size() == 2);

    const QString extension = "Main.extensionManager.%1Extension('nimbrel-lite-43@vardek.com')";
    js(extension.arg("disable"));
    EXPECT_SOON(isClear() && is("global.stage.get_children().length === found"));
    js(extension.arg("enable"));
    EXPECT_SOON(isCovered() && windows("button").size() == 2);
    click(windows("button").at(0));
    EXPECT_SOON(grab(left).sharpestStep() > clear);
}

TEST_F(Gnome, MenusAndAlertsHaveTheKeyboardAboveTheCoverAndAKillTakesThemAll) {
    startAll();
    cover();
    const auto back = [&] {
        EXPECT_SOON(windows("menu").empty() && windows("alert").empty());
        EXPECT_TRUE(hears(*editors[1]));
    };
    openMenu(windows("button").at(1));
    EXPECT_SOON((strike(escapeKey), windows("menu").empty()));
    back();

    openMenu(iconArea());
    const std::string before = editors[0]->output();
    click(left); // It closes the menu, and goes no further.
    back();
    EXPECT_EQ(editors[0]->output(), before);

    openMenu(windows("button").at(0));
    strike({downKey, downKey, downKey, downKey, rightKey});
    EXPECT_SOON(windows("menu").size() == 2);
    strike(returnKey);
    ASSERT_SOON(windows("alert").size() == 1 && hasKeyboard());
    EXPECT_SOON(isSeen("alert"));
    strike(escapeKey);
    back();
    EXPECT_TRUE(isCovered());

    openMenu(windows("button").at(1));
    strike({upKey, upKey, returnKey});
    ASSERT_SOON(windows("window").size() == 1);
    openMenu(iconArea());
    program->send(SIGKILL);
    EXPECT_SOON(is("global.stage.get_children().length === found") && isClear());
    EXPECT_TRUE(is(icon + " === undefined"));
    click(left);
    EXPECT_TRUE(hears(*editors[0]));
    startProgram();
    cover();
}

TEST_F(Gnome, TheUserIsAskedOnceBeforeTheExtensionIsEnabled) {
    enable("");
    const auto extensions = home.path() / "data/gnome-shell/extensions";
    std::filesystem::remove(extensions);
    startShell();
    std::filesystem::create_directory_symlink(EXTENSIONS, extensions);
    const auto ask = [&](uint8_t answer) {
        constexpr auto alerts = "global.get_window_actors().map(a => a.meta_window)"
                                ".filter(w => w.title === 'Nimbrel Lite' && w.has_focus()).length";
        // Where a button stands.
        expectAtAClick({1250, 450, 4, 4}, [&] { return js(alerts).toInt() == 1; });
        strike(answer);
        EXPECT_SOON(js(alerts).toInt() == 0);
    };
    const auto start = [&] {
        program.emplace(Agent::command(), environment);
        ASSERT_SOON(is("global.get_window_actors().length > 3"));
    };
    start();
    ask(escapeKey);
    ask(returnKey); // This one only tells where to turn it on.
    startShell();   // Now it would see it.
    start();
    EXPECT_FOR(500ms, windows("button").empty());
    std::filesystem::remove(home.path() / "config/com.vardek.NimbrelLite.ini");
    ask(returnKey);
    EXPECT_SOON(windows("button").size() == 2);
    cover();
}
} // namespace
