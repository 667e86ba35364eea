#include "Harness/WaylandDesk.h"

#include "Harness/Await.h"
#include "Harness/Desktop.h"

#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>

#include <csignal>
#include <sstream>
#include <stdexcept>

#include <sys/mman.h>
#include <unistd.h>

namespace Harness {

namespace {

const char* const connectionName = "wayland desk";

// Both compositors start a program that tells what they have put into its environment.
constexpr char swayConfig[] = R"(
xwayland force
default_border none
output * bg #336699 solid_color
output HEADLESS-1 resolution 1024x640 position 0 0
output HEADLESS-2 resolution 1024x640 position 1024 0
exec env
)";
constexpr char kwinConfig[] = R"(
[Plugins]
blurEnabled=true
[Windows]
ActiveMouseScreen=true
BorderlessMaximizedWindows=true
)";

std::vector<std::string> commandOf(bool isKWin, const Folder& home) {
    if (!isKWin) return {"sway", "-c", home.write("sway", swayConfig)};
    home.write("config/kwinrc", kwinConfig);
    // The installed one has a capability, which not every machine lets it have.
    const auto own = home.path() / "kwin_wayland";
    if (!std::filesystem::exists(own)) std::filesystem::copy_file("/usr/bin/kwin_wayland", own);
    return {own,   "--virtual",       "--output-count", "2",        "--width",   "1024", "--height",
            "640", "--no-lockscreen", "--xwayland",     "--socket", "wayland-1", "env"};
}

} // namespace

WaylandDesk::WaylandDesk(Kind kind)
    : m_isKWin(kind == Kind::KWin),
      m_connection(QDBusConnection::connectToBus(m_bus.address(), connectionName)),
      m_environment(environmentOf(m_home, m_bus.address(),
                                  {{"WLR_BACKENDS", "headless"},
                                   {"WLR_HEADLESS_OUTPUTS", "2"},
                                   {"WLR_LIBINPUT_NO_DEVICES", "1"},
                                   {"WLR_RENDERER", "pixman"},
                                   {"KWIN_SCREENSHOT_NO_PERMISSION_CHECKS", "1"},
                                   {"KWIN_WAYLAND_NO_PERMISSION_CHECKS", "1"}})) {
    startCompositor();
}

void WaylandDesk::startCompositor() {
    m_compositor.emplace(commandOf(m_isKWin, m_home), m_environment);
    const bool ready = await([&] {
        std::istringstream lines(m_compositor->output());
        for (std::string line; std::getline(lines, line) && !lines.eof();)
            if (const size_t equals = line.find('='); equals != std::string::npos)
                m_environment[line.substr(0, equals)] = line.substr(equals + 1);
        return m_environment.contains("DISPLAY") && m_environment.contains("WAYLAND_DISPLAY");
    });
    if (!ready) throw std::runtime_error("no compositor: " + m_compositor->errors());
    plugIn();
}

void WaylandDesk::plugIn() {
    m_hand.emplace(m_environment["XDG_RUNTIME_DIR"] + "/" + m_environment["WAYLAND_DISPLAY"],
                   bounds);
}

void WaylandDesk::restartCompositor() {
    m_compositor->send(SIGKILL);
    m_compositor->awaitEnd();
    m_hand.reset();
    for (const char* made : {"DISPLAY", "WAYLAND_DISPLAY"})
        m_environment.erase(made);
    startCompositor();
}

WaylandDesk::~WaylandDesk() {
    QDBusConnection::disconnectFromBus(connectionName);
    // It puts its sockets away, and KWin may then wait for its X server.
    m_compositor->send(SIGTERM);
    m_compositor->awaitEnd(1s);
}

std::string WaylandDesk::run(const std::vector<std::string>& command) const {
    return Harness::run(command, m_environment);
}

QImage WaylandDesk::grim() const {
    const std::string file = run({"grim", "-t", "ppm", "-"});
    return QImage::fromData(QByteArray::fromStdString(file), "PPM");
}

QImage WaylandDesk::screenshot() const {
    QDBusUnixFileDescriptor file;
    file.giveFileDescriptor(memfd_create("picture", MFD_CLOEXEC));
    auto question = QDBusMessage::createMethodCall("org.kde.KWin", "/org/kde/KWin/ScreenShot2",
                                                   "org.kde.KWin.ScreenShot2", "CaptureArea");
    question << bounds.x << bounds.y << static_cast<uint>(bounds.width)
             << static_cast<uint>(bounds.height) << QVariantMap() << QVariant::fromValue(file);
    const auto answer = m_connection.call(question);
    if (answer.type() != QDBusMessage::ReplyMessage)
        throw std::runtime_error(answer.errorMessage().toStdString());
    QImage image(bounds.width, bounds.height, QImage::Format_RGB32);
    const auto size = static_cast<size_t>(image.sizeInBytes());
    if (!await([&] { // It writes when it has answered.
            return pread(file.fileDescriptor(), image.bits(), size, 0) == image.sizeInBytes();
        }))
        throw std::runtime_error("half a picture");
    return image;
}

Picture WaylandDesk::grab(const Area& area) const {
    const QImage image = m_isKWin ? screenshot() : grim();
    Picture picture(area, image.copy(area.x, area.y, area.width, area.height));
    const auto [x, y] = m_hand->pointer();
    if (!m_isKWin) picture.erase({x - 24, y - 24, 60, 60}); // It draws it.
    return picture;
}

void WaylandDesk::setRightOutput(bool on) const {
    run({"env", "QT_QPA_PLATFORM=wayland", "KSCREEN_BACKEND_INPROCESS=1", "kscreen-doctor",
         std::string("output.Virtual-1.") + (on ? "enable" : "disable")});
}

void WaylandDesk::addOutput() const { run({"swaymsg", "create_output"}); }

void WaylandDesk::setBlur(bool on) const { // In the order in which the desktop's settings do it.
    m_home.write("config/kwinrc",
                 std::string("[Plugins]\nblurEnabled=") + (on ? "true\n" : "false\n"));
    run({"dbus-send", "--session", "--print-reply", "--dest=org.kde.KWin", "/Effects",
         std::string("org.kde.kwin.Effects.") + (on ? "loadEffect" : "unloadEffect"),
         "string:blur"});
}

} // namespace Harness
