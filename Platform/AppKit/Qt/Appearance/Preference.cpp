#include "AppKit/Qt/Appearance/Preference.h"

#include "WindowServer/Session.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <algorithm>

using WindowServer::Session;

namespace {
const QString service = "org.freedesktop.portal.Desktop";
const QString path = "/org/freedesktop/portal/desktop";
const QString settings = "org.freedesktop.portal.Settings";
const QString appearance = "org.freedesktop.appearance";
const QString currentMethod = "ReadOne";
const QString oldMethod = "Read"; // All that portals before version 2 have.

// What the portal's settings have in common.
constexpr uint noWish = 0;
constexpr uint wished = 1;
} // namespace

Preference::Preference(QString key, QStringList words)
    : m_key(std::move(key)), m_words(std::move(words)),
      m_portalStart(service, QDBusConnection::sessionBus(),
                    QDBusServiceWatcher::WatchForRegistration) {
    settle();
    auto& settingsOnServer = Session::current().settings();
    settingsOnServer.onChanged = [this, others = settingsOnServer.onChanged] {
        if (others) others();
        settle();
    };
    // From any sender: to tie a signal to a named one, Qt would wait for the bus here.
    QDBusConnection::sessionBus().connect(QString(), path, settings, "SettingChanged", this,
                                          SLOT(settingChanged(QDBusMessage)));
    connect(&m_portalStart, &QDBusServiceWatcher::serviceRegistered, this,
            [this] { ask(currentMethod); });
    ask(currentMethod);
}

void Preference::ask(const QString& method) {
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

void Preference::settingChanged(const QDBusMessage& signal) {
    const auto arguments = signal.arguments(); // The group, the key and the value.
    if (arguments.value(0) == appearance && arguments.value(1) == m_key) take(arguments.value(2));
}

void Preference::take(QVariant setting) {
    while (setting.canConvert<QDBusVariant>())
        setting = setting.value<QDBusVariant>().variant();
    m_setting = setting.toUInt();
    settle();
}

void Preference::settle() {
    const auto former = std::exchange(m_wish, std::nullopt);
    const auto theme = QString::fromStdString(Session::current().settings().themeName());
    if (m_setting != noWish)
        m_wish = m_setting == wished;
    else if (!theme.isEmpty())
        m_wish = std::ranges::any_of(m_words, [&](const QString& word) {
            return theme.contains(word, Qt::CaseInsensitive);
        });
    if (m_wish != former && onChanged) onChanged();
}
