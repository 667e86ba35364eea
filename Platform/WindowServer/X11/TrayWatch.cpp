#include "WindowServer/X11/TrayWatch.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"

#include <QCoreApplication>

#include <string>

namespace WindowServer {

TrayWatch::TrayWatch(Connection& connection)
    : m_connection(connection),
      m_selection(connection.atom(
          ("_NET_SYSTEM_TRAY_S" + std::to_string(connection.screenNumber())).c_str())),
      m_announcement(connection.atom("MANAGER")) {}

void TrayWatch::attach() {
    QCoreApplication::instance()->installNativeEventFilter(this);
    look();
}

void TrayWatch::look() {
    xcb_connection_t* const xcb = m_connection.xcb();
    const auto reply = m_connection.reply(xcb_get_selection_owner_reply,
                                          xcb_get_selection_owner(xcb, m_selection));
    m_owner = XCB_WINDOW_NONE;
    if (reply) m_owner = reply->owner;
    if (m_owner == XCB_WINDOW_NONE) return;
    listenToPanel(m_connection, m_owner);
    const auto alive = m_connection.reply(xcb_get_window_attributes_reply,
                                          xcb_get_window_attributes(xcb, m_owner));
    if (!alive) m_owner = XCB_WINDOW_NONE;
}

void TrayWatch::lookAgain() {
    const xcb_window_t before = m_owner;
    look();
    if (m_owner != before && onChanged) onChanged();
}

bool TrayWatch::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    if (typeOf(event) != XCB_CLIENT_MESSAGE) return false;
    const auto& announcement = as<xcb_client_message_event_t>(event);
    if (announcement.type == m_announcement && announcement.data.data32[1] == m_selection)
        QMetaObject::invokeMethod(
            &m_turn, [this] { lookAgain(); }, Qt::QueuedConnection);
    return false;
}

void TrayWatch::handle(const xcb_generic_event_t& event) {
    if (typeOf(event) != XCB_DESTROY_NOTIFY || m_owner == XCB_WINDOW_NONE) return;
    if (as<xcb_destroy_notify_event_t>(event).window != m_owner) return;
    m_owner = XCB_WINDOW_NONE; // One that follows at once will announce itself.
    if (onChanged) onChanged();
}

} // namespace WindowServer
