#pragma once

#include "Harness/Area.h"
#include "Harness/Await.h"
#include "Harness/Folder.h"
#include "Harness/Process.h"

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace Harness {

/// A private X server, on a display number that it picks itself.
class XServer {
public:
    /// One output of 3200x1080 in memory. More arguments go to the server as they are, and a
    /// command may stand before all to launch it.
    static std::unique_ptr<XServer> framebuffer(const std::vector<std::string>& arguments = {},
                                                std::vector<std::string> command = {}) {
        auto server = std::make_unique<XServer>();
        for (const char* word : {"Xvfb", "-displayfd", "1", "-screen", "0", "3200x1080x24", "-dpi",
                                 "96", "-noreset", "-nolisten", "tcp"})
            command.emplace_back(word);
        command.insert(command.end(), arguments.begin(), arguments.end());
        if (!server->start(command)) throw std::runtime_error(server->process().errors());
        return server;
    }

    /// A server with several outputs that can be plugged and unplugged. Null where none can start.
    static std::unique_ptr<XServer> outputs() {
        auto server = std::make_unique<XServer>();
        const Folder& folder = server->m_folder;
        const bool started =
            server->start({"/usr/lib/xorg/Xorg", "-displayfd", "1", "-config",
                           folder.write("xorg.conf", outputsConfiguration).string(), "-logfile",
                           (folder.path() / "log").string(), "-noreset", "-nolisten", "tcp",
                           "-novtswitch", "-sharevts", "-keeptty"});
        if (!started) return nullptr;
        return server;
    }

    const std::string& display() const { return m_display; } ///< ":7"
    Process& process() { return *m_process; }

    /// Runs xrandr, which speaks to the server the way a user's screen settings do.
    void xrandr(const std::vector<std::string>& arguments) const {
        std::vector<std::string> command = {"xrandr", "--display", m_display};
        command.insert(command.end(), arguments.begin(), arguments.end());
        run(command);
    }
    void setMonitor(const std::string& name, const Area& area, const char* output = "none") const {
        std::ostringstream place;
        place << area.width << "/500x" << area.height << "/300+" << area.x << "+" << area.y;
        xrandr({"--setmonitor", name, place.str(), output});
    }

private:
    bool start(const std::vector<std::string>& command) {
        m_process = std::make_unique<Process>(command);
        await([this] {
            return m_process->output().find('\n') != std::string::npos || m_process->status();
        });
        if (m_process->status()) return false;
        const std::string number = m_process->output();
        m_display = ':';
        m_display.append(number, 0, number.find('\n'));
        return true;
    }

    static constexpr auto outputsConfiguration = R"(
Section "Device"
    Identifier "Card"
    Driver "dummy"
    VideoRam 65536
EndSection
Section "Screen"
    Identifier "Screen"
    Device "Card"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Virtual 4096 2160
        Modes "1280x1024" "1024x768"
    EndSubSection
EndSection
)";

    Folder m_folder;
    std::unique_ptr<Process> m_process;
    std::string m_display;
};

} // namespace Harness
