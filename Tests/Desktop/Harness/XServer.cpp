#include "Harness/XServer.h"

#include "Harness/Await.h"

#include <sstream>
#include <stdexcept>

namespace Harness {

namespace {

constexpr auto outputsConfiguration = R"(
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

} // namespace

bool XServer::start(const std::vector<std::string>& command) {
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

std::unique_ptr<XServer> XServer::framebuffer(const std::vector<std::string>& arguments,
                                              std::vector<std::string> command) {
    auto server = std::make_unique<XServer>();
    for (const char* word : {"Xvfb", "-displayfd", "1", "-screen", "0", "3200x1080x24", "-dpi",
                             "96", "-noreset", "-nolisten", "tcp"})
        command.emplace_back(word);
    command.insert(command.end(), arguments.begin(), arguments.end());
    if (!server->start(command)) throw std::runtime_error(server->process().errors());
    return server;
}

std::unique_ptr<XServer> XServer::outputs() {
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

void XServer::xrandr(const std::vector<std::string>& arguments) const {
    std::vector<std::string> command = {"xrandr", "--display", m_display};
    command.insert(command.end(), arguments.begin(), arguments.end());
    run(command);
}

void XServer::setMonitor(const std::string& name, const Area& area, const char* output) const {
    std::ostringstream place;
    place << area.width << "/500x" << area.height << "/300+" << area.x << "+" << area.y;
    xrandr({"--setmonitor", name, place.str(), output});
}

} // namespace Harness
