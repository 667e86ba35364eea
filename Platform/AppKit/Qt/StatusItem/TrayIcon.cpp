#include "AppKit/Qt/StatusItem/TrayIcon.h"

#include "AppKit/Qt/Windows/Coordinates.h"
#include "WindowServer/Session.h"

#include <QCursor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

using WindowServer::Session;

namespace {

/// Whether the desktop's tray on the server only hands its icons on to the one on the bus.
bool isServersTrayGoBetween() {
    const auto desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(':');
    return desktops.contains(u"KDE") || desktops.contains(u"LXQt");
}

} // namespace

void TrayItem::click(NSEventType type, Qt::KeyboardModifiers modifiers) {
    const auto deliver = [this, event = eventOf(type, modifiers)] { m_button.mouseUp(event); };
    QMetaObject::invokeMethod(&m_life, deliver, Qt::QueuedConnection);
}

TrayIcon::TrayIcon(NSStatusBarButton& button)
    : m_button(button), m_watchers(notifierWatcher, QDBusConnection::sessionBus(),
                                   QDBusServiceWatcher::WatchForOwnerChange) {
    connect(&m_watchers, &QDBusServiceWatcher::serviceOwnerChanged, this, [this] {
        leave(Tray::OnBus); // The new one, if there is one, does not know the item.
        askForHost();
    });
    QDBusConnection::sessionBus().connect(QString(), notifierWatcherPath, notifierWatcher,
                                          "StatusNotifierHostRegistered", this, SLOT(askForHost()));
    Session::current().tray().onChanged = [this] {
        leave(Tray::OnServer); // Its window may have died with it.
        leave(Tray::Drawn);
        choose();
    };
    askForHost();
}

TrayIcon::~TrayIcon() { Session::current().tray().onChanged = nullptr; }

void TrayIcon::askForHost() {
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        m_hasHost = false;
        return;
    }
    auto question = QDBusMessage::createMethodCall(notifierWatcher, notifierWatcherPath,
                                                   "org.freedesktop.DBus.Properties", "Get");
    question << notifierWatcher << "IsStatusNotifierHostRegistered";
    question.setAutoStartService(false);
    bus.callWithCallback(question, this, SLOT(take(QDBusMessage)), SLOT(take()));
}

void TrayIcon::take(const QDBusMessage& answer) {
    m_hasHost = answer.arguments().value(0).value<QDBusVariant>().variant().toBool();
    choose();
}

TrayIcon::Tray TrayIcon::best() const {
    if (m_button.image() && Session::current().tray().draws()) return Tray::Drawn;
    if (!m_hasHost || !m_button.image()) return Tray::None;
    const bool onServer = Session::current().tray().isPresent();
    if (*m_hasHost && (!onServer || isServersTrayGoBetween())) return Tray::OnBus;
    return onServer ? Tray::OnServer : Tray::None;
}

void TrayIcon::leave(Tray tray) {
    if (m_tray != tray) return;
    m_item.reset();
    m_tray = Tray::None;
}

void TrayIcon::choose() {
    const Tray chosen = best();
    if (chosen == m_tray) return;
    leave(m_tray);
    m_tray = chosen;
    if (chosen == Tray::Drawn) m_item = drawnIcon(m_button);
    if (chosen == Tray::OnServer) m_item = dockedIcon(m_button);
    if (chosen == Tray::OnBus) m_item = notifierItem(m_button);
}

void TrayIcon::update() {
    choose();
    if (m_item) m_item->refresh();
}

QRect TrayIcon::place() const {
    return m_item ? m_item->place() : QRect(QCursor::pos(), QSize(1, 1));
}
