#include "AppKit/Qt/Appearance/PortalSetting.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {
const QString service = "org.freedesktop.portal.Desktop";
const QString path = "/org/freedesktop/portal/desktop";
const QString settings = "org.freedesktop.portal.Settings";
const QString appearance = "org.freedesktop.appearance";
const QString currentMethod = "ReadOne";
const QString oldMethod = "Read"; // All that portals before version 2 have.
} // namespace

PortalSetting::PortalSetting(QString key)
    : m_key(std::move(key)), m_portalStart(service, QDBusConnection::sessionBus(),
                                           QDBusServiceWatcher::WatchForRegistration) {
    // From any sender: to tie a signal to a named one, Qt would wait for the bus here.
    QDBusConnection::sessionBus().connect(QString(), path, settings, "SettingChanged", this,
                                          SLOT(settingChanged(QDBusMessage)));
    connect(&m_portalStart, &QDBusServiceWatcher::serviceRegistered, this,
            [this] { ask(currentMethod); });
    ask(currentMethod);
}

void PortalSetting::ask(const QString& method) {
    auto question = QDBusMessage::createMethodCall(service, path, settings, method);
    question << appearance << m_key;
    auto* watcher =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, method, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid())
            take(reply.value().variant());
        else if (method == currentMethod && reply.error().type() == QDBusError::UnknownMethod)
            ask(oldMethod);
    });
}

void PortalSetting::settingChanged(const QDBusMessage& signal) {
    const auto arguments = signal.arguments(); // The group, the key and the value.
    if (arguments.value(0) == appearance && arguments.value(1) == m_key) take(arguments.value(2));
}

void PortalSetting::take(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    const uint number = value.toUInt();
    if (m_value == number) return;
    m_value = number;
    if (onChanged) onChanged();
}
