#include "Harness/Logind.h"

#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace Harness {

Logind::Logind()
    : m_connection(
          QDBusConnection::connectToBus(QString::fromStdString(m_bus.address()), "logind")) {
    if (!m_connection.registerObject("/org/freedesktop/login1", this,
                                     QDBusConnection::ExportAllContents) ||
        !m_connection.registerService("org.freedesktop.login1"))
        throw std::runtime_error("no logind on the system bus");
}

Logind::~Logind() {
    QDBusConnection::disconnectFromBus("logind");
    ::close(m_delay);
}

bool Logind::isDelayed() const {
    pollfd end{m_delay, 0, 0};
    return m_delay >= 0 && ::poll(&end, 1, 0) == 0;
}

QDBusUnixFileDescriptor Logind::Inhibit(const QString& what, const QString&, const QString&,
                                        const QString& mode) {
    ++m_asked;
    int ends[2];
    if (what != "sleep" || mode != "delay" || ::pipe2(ends, O_CLOEXEC) != 0) return {};
    ::close(std::exchange(m_delay, ends[0]));
    QDBusUnixFileDescriptor delay;
    delay.giveFileDescriptor(ends[1]);
    return delay;
}

} // namespace Harness
