#include "AppKit/Qt/StatusItem/TrayIcon.h"

#include "AppKit/Qt/Windows/Coordinates.h"
#include "WindowServer/Session.h"

#include <QCursor>
#include <QDBusConnection>
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
        leave(notifierItem); // The new one, if there is one, does not know the item.
        askForHost();
    });
    QDBusConnection::sessionBus().connect(QString(), notifierWatcherPath, notifierWatcher,
                                          "StatusNotifierHostRegistered", this, SLOT(askForHost()));
    Session::current().tray().onChanged = [this] {
        if (m_maker != notifierItem) leave(m_maker); // A docked window may have died with it.
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

TrayIcon::Maker TrayIcon::best() const {
    if (m_button.image() && Session::current().tray().draws()) return drawnIcon;
    if (!m_hasHost || !m_button.image()) return nullptr;
    const bool onServer = Session::current().tray().isPresent();
    if (*m_hasHost && (!onServer || isServersTrayGoBetween())) return notifierItem;
    return onServer ? dockedIcon : nullptr;
}

void TrayIcon::leave(Maker maker) {
    if (m_maker != maker) return;
    m_item.reset();
    m_maker = nullptr;
}

void TrayIcon::choose() {
    const Maker maker = best();
    if (maker == m_maker) return;
    leave(m_maker);
    m_maker = maker;
    if (maker) m_item = maker(m_button);
}

void TrayIcon::update() {
    choose();
    if (m_item) m_item->refresh();
}

QRect TrayIcon::place() const {
    return m_item ? m_item->place() : QRect(QCursor::pos(), QSize(1, 1));
}
