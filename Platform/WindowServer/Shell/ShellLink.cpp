#include "WindowServer/Shell/ShellLink.h"

#include "Foundation/NSUserDefaults.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QStandardPaths>
#include <QVersionNumber>

#include <optional>
#include <utility>

namespace WindowServer {

namespace {

const QString shell = "org.gnome.Shell";
const QString shellPath = "/org/gnome/Shell";
const QString extensions = "org.gnome.Shell.Extensions";
const QString path = "/com/vardek/NimbrelLite";
const QString interface = "com.vardek.NimbrelLite.Shell";

constexpr int patience = 2000; ///< In milliseconds. One in health answers within a few.

// What has been said about the extension, kept beside the program's own settings.
constexpr const char* asked = "shellExtensionAsked";
constexpr const char* awaited = "shellExtensionAwaited"; ///< The Shell does not see it yet.

/// As the Shell counts the states of its extensions.
constexpr int outOfDateState = 4;

QDBusMessage question(const QString& where, const QString& what, const QString& method,
                      const QVariantList& values) {
    auto message = QDBusMessage::createMethodCall(shell, where, what, method);
    message.setArguments(values);
    message.setAutoStartService(false);
    return message;
}

/// Nothing where nobody answers, or with an error.
std::optional<QVariantList> answerTo(const QDBusMessage& message) {
    const auto answer = QDBusConnection::sessionBus().call(message, QDBus::Block, patience);
    if (answer.type() != QDBusMessage::ReplyMessage) return std::nullopt;
    return answer.arguments();
}

/// What the Shell answers to everybody; invalid where it does not.
QVariant askShell(const QString& what, const QString& method, const QVariantList& values) {
    return answerTo(question(shellPath, what, method, values)).value_or(QVariantList()).value(0);
}

/// There is one extension for the Shells that load scripts, and one for those that load modules.
QString extension() {
    const auto answer =
        askShell("org.freedesktop.DBus.Properties", "Get", {extensions, "ShellVersion"});
    const auto version =
        QVersionNumber::fromString(answer.value<QDBusVariant>().variant().toString());
    return version.majorVersion() < 45 ? "nimbrel-lite-43@vardek.com" : "nimbrel-lite@vardek.com";
}

/// What the Shell knows of it; nothing where it was installed since the login.
QVariantMap known(const QString& uuid) {
    const auto answer = askShell(extensions, "GetExtensionInfo", {uuid});
    return answer.isValid() ? qdbus_cast<QVariantMap>(answer) : QVariantMap();
}

bool isInstalled(const QString& uuid) {
    const QString file = "gnome-shell/extensions/" + uuid + "/metadata.json";
    return !QStandardPaths::locate(QStandardPaths::GenericDataLocation, file).isEmpty();
}

bool said(const char* key) { return NSUserDefaults::standardUserDefaults().boolForKey(key); }

void note(const char* key, bool value) {
    if (value)
        NSUserDefaults::standardUserDefaults().setBool(true, key);
    else
        NSUserDefaults::standardUserDefaults().removeObjectForKey(key);
}

} // namespace

void ShellLink::attach() {
    if (m_isAttached) return;
    static const bool listens = QDBusConnection::sessionBus().connect(
        shell, path, interface, QString(), this, SLOT(hear(QDBusMessage)));
    m_isAttached = listens && answerTo(question(path, interface, "Attach", {}));
    if (m_isAttached)
        onAttached();
    else if (said(awaited))
        enable();
}

void ShellLink::tell(const QString& method, const QVariantList& values) const {
    if (m_isAttached) QDBusConnection::sessionBus().send(question(path, interface, method, values));
}

bool ShellLink::ask(const QString& method, const QVariantList& values) const {
    return m_isAttached && answerTo(question(path, interface, method, values));
}

void ShellLink::hear(const QDBusMessage& signal) {
    const QString name = signal.member();
    const QVariantList values = signal.arguments();
    if (name == "Free") {
        attach();
    } else if (name == "Gone" && std::exchange(m_isAttached, false)) {
        onDetached();
    } else if (name == "Dismissed") {
        onDismissed();
    } else if (name == "KeyPressed") {
        onKeyPressed();
    } else if (name == "IconPressed" && signal.signature() == "uu(iiii)") {
        PixelRect place;
        const auto rectangle = values.at(2).value<QDBusArgument>();
        rectangle.beginStructure();
        rectangle >> place.x >> place.y >> place.width >> place.height;
        rectangle.endStructure();
        onIconPressed(values.at(0).toUInt(), values.at(1).toUInt(), place);
    }
}

// --- How the extension comes to be enabled

Remedy ShellLink::remedy() const {
    const QString uuid = extension();
    const auto state = known(uuid).value("state");
    if (!state.isValid() && !isInstalled(uuid)) return Remedy::None;
    if (state.toInt() == outOfDateState) return Remedy::OtherVersion;
    if (!said(asked)) return Remedy::Consent;
    return said(awaited) ? Remedy::NextLogin : Remedy::Setting;
}

bool ShellLink::allow(bool allowed) {
    note(asked, true);
    if (!allowed) return true;
    note(awaited, true);
    return enable();
}

bool ShellLink::enable() {
    if (!askShell(extensions, "EnableExtension", {extension()}).toBool()) return false;
    note(awaited, false);
    return true;
}

} // namespace WindowServer
