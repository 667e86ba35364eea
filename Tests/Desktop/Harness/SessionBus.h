#pragma once

#include "Harness/Folder.h"
#include "Harness/Process.h"

#include <QString>

#include <csignal>

namespace Harness {

/// A private session bus that starts no services of its own.
class SessionBus {
public:
    SessionBus();

    const QString& address() const { return m_address; }

    void freeze() { m_daemon.send(SIGSTOP); } ///< It takes connections and never says a word.

private:
    Folder m_folder;
    Process m_daemon;
    QString m_address;
};

} // namespace Harness
