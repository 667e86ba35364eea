#pragma once

#include "Harness/Await.h"
#include "Harness/Folder.h"
#include "Harness/Input.h"
#include "Harness/Screen.h"
#include "Harness/SessionBus.h"
#include "Harness/TestWindow.h"
#include "Harness/Tray.h"
#include "Harness/XServer.h"

#include <cstdlib>
#include <memory>
#include <optional>
#include <stdexcept>

namespace Harness {

/// What a program finds in its environment that has its home here, wherever it shows its windows:
/// and more, or other values.
inline Environment environmentOf(const Folder& home, const QString& busAddress,
                                 Environment more = {}) {
    more.merge(Environment{
        {"PATH", std::getenv("PATH")},
        {"LANG", "C.UTF-8"},
        {"HOME", home.path().string()},
        {"XDG_CONFIG_HOME", home.make("config").string()},
        {"XDG_DATA_HOME", home.make("data").string()},
        {"XDG_CACHE_HOME", home.make("cache").string()},
        {"XDG_RUNTIME_DIR", home.make("runtime").string()},
        {"DBUS_SESSION_BUS_ADDRESS", busAddress.toStdString()},
        {"DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent"},
    });
    return more;
}

/// A whole desktop of one test's own: server, session bus, home folder, tray. The standard one has
/// two monitors of different height side by side, so a strip of the screen belongs to neither.
class Desktop {
public:
    static constexpr Area left = {0, 0, 1920, 1080};
    static constexpr Area right = {1920, 0, 1280, 1024};
    static constexpr Area deadZone = {1920, 1024, 1280, 56};

    Desktop() : Desktop(twoMonitors()) {}
    explicit Desktop(std::unique_ptr<XServer> xServer)
        : server(std::move(xServer)), bus(std::in_place), screen(display()), input(display()) {
        // Beside the middle of the left monitor's lower edge, clear of every corner.
        tray.emplace(display(), 600, screen.bounds().height - Tray::iconSize);
    }

    /// The server of the standard desktop. More arguments go to it as they are.
    static std::unique_ptr<XServer> twoMonitors(const std::vector<std::string>& arguments = {}) {
        auto server = XServer::framebuffer(arguments);
        server->setMonitor("A", left, "screen");
        server->setMonitor("B", right);
        return server;
    }

    const std::string& display() const { return server->display(); }

    /// The neighbours most desktops have, each ready when it is returned.
    std::unique_ptr<Process> startWindowManager() const {
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
    std::unique_ptr<Process> startCompositor(const std::vector<std::string>& command = {
                                                 "picom", "--backend", "xrender", "--config",
                                                 "/dev/null"}) const {
        return startOwner("_NET_WM_CM_S0", command);
    }

    /// A program that is ready when it has the selection.
    std::unique_ptr<Process> startOwner(const std::string& selection,
                                        const std::vector<std::string>& command) const {
        auto process = std::make_unique<Process>(command, environment());
        const bool ready = await(
            [&] { return screen.selectionOwner(selection) != XCB_NONE || process->status(); });
        if (!ready || process->status())
            throw std::runtime_error(command.front() + ": " + process->errors());
        return process;
    }

    /// What a program finds in its environment here.
    Environment environment() const {
        Environment more = extra;
        more["DISPLAY"] = display();
        return environmentOf(m_home, bus ? bus->address() : "unix:path=/nonexistent", more);
    }
    /// What one says here until it ends. Throws where it fails.
    std::string run(const std::vector<std::string>& command) const {
        return Harness::run(command, environment());
    }

    Environment extra; ///< More for programs to find in their environment, or other values there.
    std::unique_ptr<XServer> server;
    std::optional<SessionBus> bus;
    Screen screen;
    Input input;
    std::optional<Tray> tray;

private:
    Folder m_home;
};

} // namespace Harness
