#include "Harness/NotifierTray.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusReply>

#include <stdexcept>

namespace Harness {

NotifierTray::NotifierTray(const std::string& busAddress)
    : m_bus(QDBusConnection::connectToBus(QString::fromStdString(busAddress), "tray")) {
    if (!m_bus.registerObject("/StatusNotifierWatcher", this, QDBusConnection::ExportAllContents) ||
        !m_bus.registerService("org.kde.StatusNotifierWatcher"))
        throw std::runtime_error("no tray on the session bus");
}

NotifierTray::~NotifierTray() { QDBusConnection::disconnectFromBus("tray"); }

void NotifierTray::RegisterStatusNotifierItem(const QString& service) {
    m_items.append(service);
    emit StatusNotifierItemRegistered(service);
}

QVariant NotifierTray::property(const QString& name) {
    auto question =
        QDBusMessage::createMethodCall(m_items.value(m_items.size() - 1), "/StatusNotifierItem",
                                       "org.freedesktop.DBus.Properties", "Get");
    question << "org.kde.StatusNotifierItem" << name;
    const QDBusReply<QDBusVariant> reply = m_bus.call(question);
    return reply.value().variant();
}

void NotifierTray::click(int x, int y) { call("Activate", x, y); }

void NotifierTray::rightClick(int x, int y) { call("ContextMenu", x, y); }

void NotifierTray::call(const QString& method, int x, int y) {
    auto message =
        QDBusMessage::createMethodCall(m_items.value(m_items.size() - 1), "/StatusNotifierItem",
                                       "org.kde.StatusNotifierItem", method);
    message << x << y;
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<> reply = *watcher;
        if (reply.isValid()) ++m_answered;
        watcher->deleteLater();
    });
}

} // namespace Harness
