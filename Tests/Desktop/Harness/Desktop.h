#pragma once

#include "Harness/Folder.h"
#include "Harness/Input.h"
#include "Harness/Screen.h"
#include "Harness/SessionBus.h"
#include "Harness/Tray.h"
#include "Harness/XServer.h"

#include <memory>
#include <optional>

namespace Harness {

/// What a program finds in its environment that has its home here, wherever it shows its windows.
Environment environmentOf(const Folder& home, const QString& busAddress);

/// A whole desktop of one test's own: server, session bus, home folder, tray. The standard one has
/// two monitors of different height side by side, so a strip of the screen belongs to neither.
class Desktop {
public:
    static constexpr Area left = {0, 0, 1920, 1080};
    static constexpr Area right = {1920, 0, 1280, 1024};
    static constexpr Area deadZone = {1920, 1024, 1280, 56};

    Desktop();
    explicit Desktop(std::unique_ptr<XServer> xServer);

    /// The server of the standard desktop. More arguments go to it as they are.
    static std::unique_ptr<XServer> twoMonitors(const std::vector<std::string>& arguments = {});

    const std::string& display() const { return server->display(); }

    /// The neighbours most desktops have, each ready when it is returned.
    std::unique_ptr<Process> startWindowManager() const;
    std::unique_ptr<Process> startCompositor(const std::vector<std::string>& command = {
                                                 "picom", "--backend", "xrender", "--config",
                                                 "/dev/null"}) const;

    /// A program that is ready when it has the selection.
    std::unique_ptr<Process> startOwner(const std::string& selection,
                                        const std::vector<std::string>& command) const;

    /// What a program finds in its environment here.
    Environment environment() const;
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
