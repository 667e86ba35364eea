#pragma once

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QObject>

#include <functional>
#include <optional>

class QDBusPendingCallWatcher;

/// Hears from logind, on the system bus, that the machine goes to sleep and has woken, and makes it
/// wait with the sleep until that has been dealt with. Goes to the bus as it is first wanted, waits
/// for nothing, and without a bus or logind does nothing.
class SleepWatch : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether the machine has to wait. It does so for as long as its own settings say, five
    /// seconds by default.
    void setWanted(bool wanted);

    /// Called with true before the machine sleeps, which it does no sooner than this has returned
    /// where it has to wait; with false when it has woken.
    std::function<void(bool)> onSleep;

private slots:
    void prepareForSleep(const QDBusMessage& signal);

private:
    void lookForBus();
    void connectToBus();
    void askForDelay();
    void take(QDBusPendingCallWatcher* answer);

    std::optional<QDBusConnection> m_bus;
    QDBusUnixFileDescriptor m_delay; ///< While it is open, the machine waits.
    bool m_isLooking = false;
    bool m_isAsking = false;
    bool m_wanted = false;
    bool m_sleeps = false;
};
