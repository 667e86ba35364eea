#include "Harness/Desktop.h"

#include "Harness/Await.h"
#include "Harness/TestWindow.h"

#include <cstdlib>
#include <stdexcept>

namespace Harness {

namespace {

// Beside the middle of the left monitor's lower edge, clear of every corner.
constexpr int trayX = 600;

} // namespace

Desktop::Desktop() : Desktop(twoMonitors()) {}

Desktop::Desktop(std::unique_ptr<XServer> xServer)
    : server(std::move(xServer)), bus(std::in_place), screen(display()), input(display()) {
    tray.emplace(display(), trayX, screen.bounds().height - Tray::iconSize);
}

std::unique_ptr<XServer> Desktop::twoMonitors(const std::vector<std::string>& arguments) {
    auto server = XServer::framebuffer(arguments);
    server->setMonitor("A", left, "screen");
    server->setMonitor("B", right);
    return server;
}

std::unique_ptr<Process> Desktop::startOwner(const std::string& selection,
                                             const std::vector<std::string>& command) const {
    auto process = std::make_unique<Process>(command, environment());
    const bool ready =
        await([&] { return screen.selectionOwner(selection) != XCB_NONE || process->status(); });
    if (!ready || process->status())
        throw std::runtime_error(command.front() + ": " + process->errors());
    return process;
}

std::unique_ptr<Process> Desktop::startWindowManager() const {
    auto manager = startOwner("WM_S0", {"openbox", "--sm-disable"});
    // While it starts, a window that asks to be shown may be overlooked.
    TestWindow probe(display(), {0, 0, 100, 100}, TestWindow::Kind::Managed);
    const bool ready = await([&] {
        probe.show();
        return screen.isViewable(probe.number());
    });
    if (!ready) throw std::runtime_error("The window manager shows no window.");
    return manager;
}

std::unique_ptr<Process> Desktop::startCompositor(const std::vector<std::string>& command) const {
    return startOwner("_NET_WM_CM_S0", command);
}

Environment environmentOf(const Folder& home, const QString& busAddress) {
    return {
        {"PATH", std::getenv("PATH")},
        {"LANG", "C.UTF-8"},
        {"HOME", home.path().string()},
        {"XDG_CONFIG_HOME", home.make("config").string()},
        {"XDG_DATA_HOME", home.make("data").string()},
        {"XDG_CACHE_HOME", home.make("cache").string()},
        {"XDG_RUNTIME_DIR", home.make("runtime").string()},
        {"DBUS_SESSION_BUS_ADDRESS", busAddress.toStdString()},
        {"DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent"},
    };
}

Environment Desktop::environment() const {
    auto result = environmentOf(m_home, bus ? bus->address() : "unix:path=/nonexistent");
    result["DISPLAY"] = display();
    for (const auto& [name, value] : extra)
        result[name] = value;
    return result;
}

} // namespace Harness
