#include "Harness/SessionBus.h"

#include "Harness/Await.h"

#include <stdexcept>

namespace Harness {

namespace {

std::string configuration(const Folder& folder) {
    return "<busconfig><type>session</type><listen>unix:dir=" + folder.path().string() +
           "</listen><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
           "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>";
}

} // namespace

SessionBus::SessionBus()
    : m_daemon({"dbus-daemon", "--nofork", "--print-address=1",
                "--config-file=" + m_folder.write("bus.conf", configuration(m_folder)).string()}) {
    if (!await([this] { return m_daemon.output().find('\n') != std::string::npos; }))
        throw std::runtime_error("no session bus: " + m_daemon.errors());
    m_address = QString::fromStdString(m_daemon.output()).trimmed();
}

} // namespace Harness
