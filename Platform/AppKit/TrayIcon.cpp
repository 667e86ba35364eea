#include "AppKit/TrayIcon+Private.h"

#include "AppKit/NSImage+Private.h"
#include "AppKit/NSStatusBarButton.h"
#include "WindowServer/Session.h"

#include <QCursor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEvent>
#include <QGuiApplication>

using WindowServer::Session;

namespace {

const QString watcherService = "org.kde.StatusNotifierWatcher";
const QString watcherPath = "/StatusNotifierWatcher";

NSEvent eventOf(NSEventType type, Qt::KeyboardModifiers modifiers) {
    const bool control = modifiers & Qt::ControlModifier;
    return {type, control ? NSUInteger{NSEventModifierFlagControl} : 0};
}

} // namespace

// Qt decides once in a process which kind of tray there is, as it makes the first icon, and the
// answer stays. So none is made before a tray is known to take it.
TrayIcon::TrayIcon(NSStatusBarButton& button)
    : m_button(button), m_watcherStart(watcherService, QDBusConnection::sessionBus(),
                                       QDBusServiceWatcher::WatchForRegistration) {
    connect(&m_watcherStart, &QDBusServiceWatcher::serviceRegistered, this, &TrayIcon::lookForTray);
    QDBusConnection::sessionBus().connect(QString(), watcherPath, watcherService,
                                          "StatusNotifierHostRegistered", this,
                                          SLOT(lookForTray()));
    Session::current().onTrayChanged = [this] {
        m_icon.reset(); // Its window may have died with the old tray.
        lookForTray();
    };
    qApp->installEventFilter(this);
    lookForTray();
}

TrayIcon::~TrayIcon() { Session::current().onTrayChanged = nullptr; }

void TrayIcon::lookForTray() {
    if (m_icon) return; // Qt brings it back to a bus that has a tray again.
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return appearIf(Session::current().hasTray());
    auto question = QDBusMessage::createMethodCall(watcherService, watcherPath,
                                                   "org.freedesktop.DBus.Properties", "Get");
    question << watcherService << "IsStatusNotifierHostRegistered";
    question.setAutoStartService(false);
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> hasHost = *watcher;
        const bool onBus = hasHost.isValid() && hasHost.value().variant().toBool();
        appearIf(onBus || Session::current().hasTray());
    });
}

void TrayIcon::appearIf(bool hasTray) {
    if (!hasTray || m_icon) return;
    m_icon = std::make_unique<QSystemTrayIcon>();
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, &TrayIcon::click);
    update();
}

// A menu may stay open for long: neither the tray, whose call this is, nor the icon waits for it.
void TrayIcon::click(QSystemTrayIcon::ActivationReason reason) {
    // The second click of a quick pair is a click like the first.
    const bool left = reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick;
    if (!left && reason != QSystemTrayIcon::Context) return;
    // An icon with a window heard which keys were held at the click; a tray on the bus does not
    // tell.
    const auto modifiers = m_icon->geometry().isValid() ? QGuiApplication::keyboardModifiers()
                                                        : QGuiApplication::queryKeyboardModifiers();
    const NSEvent event =
        eventOf(left ? NSEventTypeLeftMouseUp : NSEventTypeRightMouseUp, modifiers);
    const auto deliver = [this, left, event] {
        left ? m_button.mouseUp(event) : m_button.rightMouseUp(event);
    };
    QMetaObject::invokeMethod(this, deliver, Qt::QueuedConnection);
}

bool TrayIcon::eventFilter(QObject* object, QEvent* event) {
    if (object == qApp && event->type() == QEvent::ApplicationPaletteChange) update();
    return false;
}

void TrayIcon::update() {
    if (!m_icon) return;
    m_icon->setToolTip(QString::fromStdString(m_button.toolTip()));
    m_icon->setIcon(m_button.image() ? iconFrom(*m_button.image()) : QIcon());
    offerMenu(); // It changes with what the image tells of.
    m_icon->setVisible(m_button.image() != nullptr);
}

void TrayIcon::offerMenu() {
    // An icon with a window opens its menu itself.
    if (!m_icon || m_icon->geometry().isValid()) return;
    if (const auto menu = m_button.menuOfRightClick()) m_menu.offer(*menu, *m_icon);
}

QRect TrayIcon::place() const {
    const QRect known = m_icon ? m_icon->geometry() : QRect();
    return known.isValid() ? known : QRect(QCursor::pos(), QSize(1, 1));
}
