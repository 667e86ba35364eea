#include "Harness/NotifierTray.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusReply>

#include <stdexcept>

namespace Harness {

namespace {

NotifierTray::Row rowIn(const QDBusArgument& argument) {
    NotifierTray::Row row;
    argument.beginStructure();
    argument >> row.number >> row.properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant inner;
        argument >> inner;
        row.rows.push_back(rowIn(inner.variant().value<QDBusArgument>()));
    }
    argument.endArray();
    argument.endStructure();
    return row;
}

} // namespace

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

QDBusMessage NotifierTray::menuCall(const QString& method) {
    const auto path = property("Menu").value<QDBusObjectPath>().path();
    return QDBusMessage::createMethodCall(m_items.value(m_items.size() - 1), path,
                                          "com.canonical.dbusmenu", method);
}

NotifierTray::Row NotifierTray::menu() {
    constexpr int whole = 0;
    constexpr int allBelow = -1;
    auto question = menuCall("GetLayout");
    const auto reply = m_bus.call(question << whole << allBelow << QStringList());
    const auto arguments = reply.arguments(); // The revision and the whole.
    return arguments.size() == 2 ? rowIn(arguments[1].value<QDBusArgument>()) : Row();
}

void NotifierTray::choose(const Row& row) {
    constexpr uint now = 0;
    auto event = menuCall("Event");
    m_bus.call(event << row.number << "clicked" << QVariant::fromValue(QDBusVariant(0)) << now);
}

std::vector<std::string> NotifierTray::Row::titles() const {
    std::vector<std::string> all;
    for (const Row& row : rows)
        all.push_back(row.title().toStdString());
    return all;
}

NotifierTray::Row NotifierTray::Row::operator[](const std::string& title) const {
    for (const Row& row : rows)
        if (row.title().toStdString() == title) return row;
    return {};
}

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
