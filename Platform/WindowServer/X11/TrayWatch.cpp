#include "WindowServer/X11/TrayWatch.h"

#include "WindowServer/X11/Connection.h"

#include <string>

namespace WindowServer {

TrayWatch::TrayWatch(Connection& connection)
    : m_connection(connection),
      m_selection(connection.atom(
          ("_NET_SYSTEM_TRAY_S" + std::to_string(connection.screenNumber())).c_str())),
      m_announcement(connection.atom("MANAGER")) {}

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

void TrayWatch::handle(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7f;
    if (type == XCB_CLIENT_MESSAGE) {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (message.type != m_announcement || message.data.data32[1] != m_selection) return;
    } else if (type == XCB_DESTROY_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        if (m_owner == XCB_WINDOW_NONE || notify.window != m_owner) return;
    } else {
        return;
    }
    look();
    if (onChanged) onChanged();
}

} // namespace WindowServer
