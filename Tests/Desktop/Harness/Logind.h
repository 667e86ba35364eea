#pragma once

#include "Harness/SessionBus.h"

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QObject>

namespace Harness {

/// The keeper of the machine's sleep, on a system bus of its own.
class Logind : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    Logind();
    ~Logind() override;

    const std::string& busAddress() const { return m_bus.address(); }

    void announce(bool sleeps) { emit PrepareForSleep(sleeps); }

    bool isDelayed() const; ///< Whether somebody makes the machine wait with its sleep.
    int asked() const { return m_asked; } ///< How often somebody wished to.

public slots:
    QDBusUnixFileDescriptor Inhibit(const QString& what, const QString& who, const QString& why,
                                    const QString& mode);

signals:
    void PrepareForSleep(bool start);

private:
    SessionBus m_bus;
    QDBusConnection m_connection;
    int m_delay = -1; ///< Hangs up as the last holder of the other end lets go.
    int m_asked = 0;
};

} // namespace Harness
