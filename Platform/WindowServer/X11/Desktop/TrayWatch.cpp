#include "WindowServer/X11/Desktop/TrayWatch.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Desktop/TrayDock.h"
#include "WindowServer/X11/Event.h"

#include <string>

namespace WindowServer {

TrayWatch::TrayWatch(Connection& connection)
    : m_connection(connection),
      m_selection(connection.atom(
          ("_NET_SYSTEM_TRAY_S" + std::to_string(connection.screenNumber())).c_str())),
      m_announcement(connection.atom("MANAGER")),
      m_colors(connection.atom("_NET_SYSTEM_TRAY_COLORS")) {}

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

bool TrayWatch::concerns(const xcb_generic_event_t& event) {
    switch (typeOf(event)) {
    case XCB_CLIENT_MESSAGE: {
        const auto& announcement = as<xcb_client_message_event_t>(event);
        if (announcement.type != m_announcement || announcement.data.data32[1] != m_selection)
            return false;
        const xcb_window_t before = m_owner;
        look();
        return m_owner != before;
    }
    case XCB_PROPERTY_NOTIFY: {
        const auto& told = as<xcb_property_notify_event_t>(event);
        return told.window == m_owner && told.atom == m_colors;
    }
    case XCB_DESTROY_NOTIFY:
        if (!isPresent() || as<xcb_destroy_notify_event_t>(event).window != m_owner) return false;
        m_owner = XCB_WINDOW_NONE; // One that follows at once will announce itself.
        return true;
    default:
        return false;
    }
}

void TrayWatch::dock(ToolkitWindow icon, const std::function<void()>& docked) {
    m_icon = static_cast<xcb_window_t>(icon);
    m_docked = docked;
    dockToolkit(m_connection, m_owner, icon);
}

void TrayWatch::handle(const xcb_generic_event_t& event) {
    if (typeOf(event) == XCB_MAP_NOTIFY && m_docked &&
        as<xcb_map_notify_event_t>(event).window == m_icon)
        m_docked();
    if (concerns(event) && onChanged) onChanged();
}

} // namespace WindowServer
