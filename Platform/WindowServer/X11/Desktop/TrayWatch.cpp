#include "WindowServer/X11/Desktop/TrayWatch.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Desktop/TrayDock.h"
#include "WindowServer/X11/Event.h"

#include <utility>

namespace WindowServer {

TrayWatch::TrayWatch(Connection& connection)
    : m_connection(connection), m_tray(connection, "_NET_SYSTEM_TRAY_S"),
      m_colors(connection.atom("_NET_SYSTEM_TRAY_COLORS")) {
    m_tray.onChanged = [this] {
        if (onChanged) onChanged();
    };
}

void TrayWatch::dock(ToolkitWindow icon, std::function<void()> docked) {
    m_icon = static_cast<xcb_window_t>(icon);
    m_docked = std::move(docked);
    dockToolkit(m_connection, owner(), icon);
}

void TrayWatch::handle(const xcb_generic_event_t& event) {
    m_tray.handle(event);
    const int type = typeOf(event);
    if (type == XCB_MAP_NOTIFY && m_docked && subjectOf(event) == m_icon) m_docked();
    if (type != XCB_PROPERTY_NOTIFY) return;
    const auto& told = as<xcb_property_notify_event_t>(event);
    if (told.window == owner() && told.atom == m_colors && onChanged) onChanged();
}

} // namespace WindowServer
