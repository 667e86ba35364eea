#include "AppKit/Qt/Application/Launch.h"
#include "WindowServer/Session.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusUnixFileDescriptor>

#include <cstdlib>

using WindowServer::Session;

namespace {
const QString service = "org.freedesktop.login1";
const QString path = "/org/freedesktop/login1";
const QString manager = "org.freedesktop.login1.Manager";

std::string systemBusAddress() {
    const char* named = std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
    return named ? named : "unix:path=/run/dbus/system_bus_socket";
}

class SleepWatch : public QObject {
    Q_OBJECT

public:
    explicit SleepWatch(QObject* parent) : QObject(parent) {
        Session::current().surfaces().onCovered = [this](bool covered) { setWanted(covered); };
    }

private slots:
    void prepareForSleep(const QDBusMessage& signal) {
        // The bus library ends the program over a signal that does not fit a slot's own types.
        if (signal.signature() != "b") return;
        m_sleeps = signal.arguments().at(0).toBool();
        Session::current().surfaces().setResting(m_sleeps); // Has come about as this returns.
        if (m_sleeps)
            m_delay = {};
        else
            askForDelay();
    }
    void take(const QDBusMessage& answer) {
        const QDBusReply<QDBusUnixFileDescriptor> delay = answer;
        if (m_wanted && !m_sleeps) m_delay = delay.value();
    }

private:
    /// Whether the machine has to wait. It does so for as long as its own settings say, five
    /// seconds by default.
    void setWanted(bool wanted) {
        if (m_wanted == wanted) return;
        m_wanted = wanted;
        if (!wanted)
            m_delay = {};
        else if (m_bus)
            askForDelay();
        else
            lookForBus();
    }

    /// The bus library waits for its bus while it connects, so it is let only to one that answers.
    void lookForBus() {
        if (std::exchange(m_isLooking, true)) return;
        probeBus(systemBusAddress(), [this](bool letIn) { // For as long as the process runs.
            QMetaObject::invokeMethod(this, [this, letIn] {
                m_isLooking = false;
                if (letIn) connectToBus();
            });
        });
    }

    void connectToBus() {
        const auto bus = QDBusConnection::systemBus();
        if (!bus.isConnected()) return;
        m_bus = bus;
        // From any sender: to tie a signal to a named one, Qt would wait for the bus here.
        m_bus->connect(QString(), path, manager, "PrepareForSleep", this,
                       SLOT(prepareForSleep(QDBusMessage)));
        askForDelay();
    }

    void askForDelay() {
        if (!m_wanted || m_sleeps || m_delay.isValid()) return;
        auto question = QDBusMessage::createMethodCall(service, path, manager, "Inhibit");
        question << "sleep" << QCoreApplication::applicationName()
                 << "The screens are covered before they go dark"
                 << "delay";
        question.setAutoStartService(false);
        m_bus->callWithCallback(question, this, SLOT(take(QDBusMessage)));
    }

    std::optional<QDBusConnection> m_bus;
    QDBusUnixFileDescriptor m_delay; ///< While it is open, the machine waits.
    bool m_isLooking = false;
    bool m_wanted = false;
    bool m_sleeps = false;
};

} // namespace

void watchSleep() { new SleepWatch(qApp); }

#include "SleepWatch.moc"
