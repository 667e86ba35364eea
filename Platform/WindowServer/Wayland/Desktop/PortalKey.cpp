#include "WindowServer/Wayland/Desktop/PortalKey.h"

#include "Foundation/NSUserDefaults.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace WindowServer::Wayland {

namespace {

using Shortcut = std::pair<QString, QVariantMap>; ///< Its name, and what is told of it.

const QString service = "org.freedesktop.portal.Desktop";
const QString path = "/org/freedesktop/portal/desktop";
const QString shortcuts = "org.freedesktop.portal.GlobalShortcuts";
constexpr int patience = 1000; ///< In milliseconds.

const QString action = "toggle";

// The last parts of paths that the portal makes for this program.
const QString making = "nimbrel_make", binding = "nimbrel_bind";

// What the user has answered, kept beside the program's own settings.
constexpr const char* asked = "shortcutAsked";
constexpr const char* allowed = "shortcutAllowed";

NSUserDefaults& defaults() { return NSUserDefaults::standardUserDefaults(); }

QDBusMessage call(const QString& interface, const QString& method, const QVariantList& values) {
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(values);
    return message;
}

QString pathOf(const QString& kind, const QString& token) {
    const QString name = QDBusConnection::sessionBus().baseService();
    return path + '/' + kind + '/' + name.mid(1).replace('.', '_') + '/' + token;
}

QDBusObjectPath session() { return QDBusObjectPath(pathOf("session", making)); }

void listen(const QString& token, QObject* receiver, const char* slot) {
    QDBusConnection::sessionBus().connect(QString(), pathOf("request", token),
                                          "org.freedesktop.portal.Request", "Response", receiver,
                                          slot);
}

bool isOffered() {
    const auto version = call("org.freedesktop.DBus.Properties", "Get", {shortcuts, "version"});
    return QDBusConnection::sessionBus().call(version, QDBus::Block, patience).type() ==
           QDBusMessage::ReplyMessage;
}

} // namespace

bool PortalKey::take(const KeyChord& chord) {
    if (!m_trigger.isEmpty()) return false;
    const auto plain = m_keymap.plainKeyOf(static_cast<uint32_t>(chord.kernelCode));
    if (!plain) return false;
    if (chord.control) m_trigger += "CTRL+";
    if (chord.alt) m_trigger += "ALT+";
    if (chord.super) m_trigger += "LOGO+";
    m_trigger += QChar(*plain).toLower();

    qDBusRegisterMetaType<Shortcut>();
    qDBusRegisterMetaType<QList<Shortcut>>();
    auto bus = QDBusConnection::sessionBus();
    bus.connect(QString(), path, shortcuts, "Activated", this, SLOT(activated(QDBusMessage)));
    auto* const starts =
        new QDBusServiceWatcher(service, bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(starts, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        if (defaults().boolForKey(allowed)) begin();
    });
    // Windows that open with the program are not the user's doing.
    QTimer::singleShot(0, this, [this] { qApp->installEventFilter(this); });
    if (!defaults().boolForKey(allowed) || !isOffered()) return false;
    begin();
    return true;
}

bool PortalKey::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::Show || !object->isWidgetType()) return false;
    const auto& widget = static_cast<const QWidget&>(*object);
    const bool isOrdinary =
        widget.windowType() == Qt::Window && !(widget.windowFlags() & Qt::BypassWindowManagerHint);
    if (!isOrdinary) return false;
    qApp->removeEventFilter(this);
    if (!defaults().boolForKey(asked)) begin();
    return false;
}

void PortalKey::begin() {
    listen(making, this, SLOT(sessionMade(uint)));
    const QVariantMap options = {{"handle_token", making}, {"session_handle_token", making}};
    QDBusConnection::sessionBus().send(call(shortcuts, "CreateSession", {options}));
}

void PortalKey::sessionMade(uint answer) {
    if (answer != 0) return;
    listen(binding, this, SLOT(bound(uint, QVariantMap)));
    const Shortcut shortcut = {
        action, {{"description", "Blur or show every screen"}, {"preferred_trigger", m_trigger}}};
    QDBusConnection::sessionBus().send(
        call(shortcuts, "BindShortcuts",
             {QVariant::fromValue(session()), QVariant::fromValue(QList<Shortcut>{shortcut}),
              QString(), QVariantMap{{"handle_token", binding}}}));
}

void PortalKey::bound(uint answer, const QVariantMap& results) {
    constexpr uint granted = 0, refused = 1;
    if (answer > refused) return; // It came to no answer of the user's.
    const auto list = qdbus_cast<QList<Shortcut>>(results.value("shortcuts"));
    const bool isOurs = std::ranges::find(list, action, &Shortcut::first) != list.end();
    defaults().setBool(true, asked);
    if (answer == granted && isOurs)
        defaults().setBool(true, allowed);
    else
        defaults().removeObjectForKey(allowed);
}

/// None comes once the portal, or the user by way of it, has closed the session.
void PortalKey::activated(const QDBusMessage& signal) {
    const bool isOurs = signal.arguments().value(0).value<QDBusObjectPath>() == session() &&
                        signal.arguments().value(1) == action;
    if (isOurs && onPressed) onPressed();
}

} // namespace WindowServer::Wayland
