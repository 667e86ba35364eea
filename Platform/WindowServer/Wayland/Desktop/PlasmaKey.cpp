#include "WindowServer/Wayland/Desktop/PlasmaKey.h"

#include "Foundation/NSBundle+Private.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace WindowServer::Wayland {

namespace {

const QString service = "org.kde.kglobalaccel";
constexpr int patience = 1000; ///< In milliseconds.

// How the service is to take the keys: as in use, and not as it has them stored.
constexpr uint isPresent = 2;
constexpr uint asGiven = 4;

const QString action = "toggle";

QString component() { return QString::fromStdString(infoOf("CFBundleIdentifier")); }

/// Of the component, the action, and both as users read them.
QStringList identity() {
    return {component(), action, QString::fromStdString(infoOf("CFBundleName")),
            "Blur or show every screen"};
}

QDBusMessage call(const QString& method) {
    auto message =
        QDBusMessage::createMethodCall(service, "/kglobalaccel", "org.kde.KGlobalAccel", method);
    message.setAutoStartService(false);
    return message << identity();
}

} // namespace

bool PlasmaKey::isOffered() {
    const auto* const bus = QDBusConnection::sessionBus().interface();
    return bus && bus->isServiceRegistered(service);
}

bool PlasmaKey::take(const KeyChord& chord) {
    auto bus = QDBusConnection::sessionBus();
    if (m_isTaken) return false;
    const auto plain = m_keymap.plainKeyOf(static_cast<uint32_t>(chord.kernelCode));
    if (!plain) return false;
    int key = *plain;
    if (chord.control) key |= static_cast<int>(Qt::ControlModifier);
    if (chord.alt) key |= static_cast<int>(Qt::AltModifier);
    if (chord.super) key |= static_cast<int>(Qt::MetaModifier);
    bus.call(call("doRegister"), QDBus::Block, patience);
    const auto granted = bus.call(call("setShortcut") << QVariant::fromValue(QList<int>{key})
                                                      << (isPresent | asGiven),
                                  QDBus::Block, patience);
    const auto now = qdbus_cast<QList<int>>(granted.arguments().value(0));
    if (!now.contains(key)) return false;
    m_isTaken = true;
    bus.connect(service, "/component/" + QString(component()).replace('.', '_'),
                "org.kde.kglobalaccel.Component", "globalShortcutPressed", this,
                SLOT(pressed(QString, QString, qlonglong)));
    connect(qApp, &QCoreApplication::aboutToQuit, this, &PlasmaKey::letGo);
    return true;
}

void PlasmaKey::pressed(const QString&, const QString& pressedAction, qlonglong) {
    if (pressedAction == action && onPressed) onPressed();
}

/// A newer instance that has the program's name by now has the key as well.
void PlasmaKey::letGo() const {
    const auto bus = QDBusConnection::sessionBus();
    if (bus.isConnected() &&
        bus.interface()->serviceOwner(component()).value() == bus.baseService())
        bus.call(call("setInactive"), QDBus::Block, patience);
}

} // namespace WindowServer::Wayland
