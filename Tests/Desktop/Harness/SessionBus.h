#pragma once

#include "Harness/Await.h"
#include "Harness/Folder.h"
#include "Harness/Process.h"

#include <QString>

#include <csignal>
#include <stdexcept>

namespace Harness {

/// A private session bus that starts no services of its own.
class SessionBus {
public:
    SessionBus()
        : m_daemon(
              {"dbus-daemon", "--nofork", "--print-address=1",
               "--config-file=" + m_folder.write("bus.conf", configuration(m_folder)).string()}) {
        if (!await([this] { return m_daemon.output().find('\n') != std::string::npos; }))
            throw std::runtime_error("no session bus: " + m_daemon.errors());
        m_address = QString::fromStdString(m_daemon.output()).trimmed();
    }

    const QString& address() const { return m_address; }

    void freeze() { m_daemon.send(SIGSTOP); } ///< It takes connections and never says a word.

private:
    static std::string configuration(const Folder& folder) {
        return "<busconfig><type>session</type><listen>unix:dir=" + folder.path().string() +
               "</listen><policy context=\"default\"><allow send_destination=\"*\" "
               "eavesdrop=\"true\"/>"
               "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>";
    }

    Folder m_folder;
    Process m_daemon;
    QString m_address;
};

} // namespace Harness
