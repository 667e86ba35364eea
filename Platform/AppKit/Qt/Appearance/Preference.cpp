#include "AppKit/Qt/Appearance/Preference.h"

#include "WindowServer/Session.h"

#include <QDBusConnection>
#include <QDBusVariant>

#include <algorithm>

using WindowServer::Session;

namespace {
const QString service = "org.freedesktop.portal.Desktop";
const QString path = "/org/freedesktop/portal/desktop";
const QString settings = "org.freedesktop.portal.Settings";
const QString appearance = "org.freedesktop.appearance";
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
    connect(&m_portalStart, &QDBusServiceWatcher::serviceRegistered, this, &Preference::ask);
    ask();
}

/// By the one method that portals of every version have.
void Preference::ask() {
    auto question = QDBusMessage::createMethodCall(service, path, settings, "Read");
    question << appearance << m_key;
    QDBusConnection::sessionBus().callWithCallback(question, this, SLOT(take(QDBusMessage)));
}

void Preference::take(const QDBusMessage& answer) { take(answer.arguments().value(0)); }

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
    if (m_setting != 0)
        m_wish = m_setting == 1;
    else if (!theme.isEmpty())
        m_wish = std::ranges::any_of(m_words, [&](const QString& word) {
            return theme.contains(word, Qt::CaseInsensitive);
        });
    if (m_wish != former && onChanged) onChanged();
}
