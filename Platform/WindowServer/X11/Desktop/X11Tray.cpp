#include "WindowServer/X11/Desktop/X11Tray.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/PixelMath.h"
#include "WindowServer/X11/Windows/ToolkitGuard.h"

namespace WindowServer {

X11Tray::X11Tray(Connection& connection)
    : m_connection(connection), m_panel(connection, "_NET_SYSTEM_TRAY_S"),
      m_colors(connection.atom("_NET_SYSTEM_TRAY_COLORS")) {
    m_panel.onChanged = [this] {
        if (onChanged) onChanged();
    };
}

void X11Tray::handle(const xcb_generic_event_t& event) {
    m_panel.handle(event);
    const int type = typeOf(event);
    // The tray may take the icon first and show itself only then.
    if (type == XCB_EXPOSE && m_docked && as<xcb_expose_event_t>(event).window == m_icon)
        m_docked();
    if (type != XCB_PROPERTY_NOTIFY) return;
    const auto& told = as<xcb_property_notify_event_t>(event);
    if (told.window == m_panel.owner() && told.atom == m_colors && onChanged) onChanged();
}

TrayLook X11Tray::look() const {
    TrayLook look;
    const auto told = [this](xcb_atom_t property) {
        constexpr uint32_t most = 16;
        return m_connection.numbers(m_panel.owner(), property, most);
    };
    const auto visual = told(m_connection.atom("_NET_SYSTEM_TRAY_VISUAL"));
    const auto format = visual.empty() ? 0 : m_connection.formatOf(visual[0]);
    look.translucent = format && m_connection.hasAlpha(format);
    // The first of its colours is that of symbols, 16 bits for each of red, green and blue.
    const auto colors = told(m_colors);
    if (colors.size() >= 3)
        look.ink = (colors[0] >> 8 << 16) | (colors[1] >> 8 << 8) | (colors[2] >> 8);
    return look;
}

/// Unmapped first: a tray takes the unmapping that comes with reparenting for the icon's end.
void X11Tray::dock(WindowId window, const std::function<void()>& docked) {
    m_icon = static_cast<xcb_window_t>(window);
    m_docked = docked;
    settleToolkit(); // The window exists for this connection from here on.
    succeeded(m_connection.xcb(), xcb_unmap_window_checked(m_connection.xcb(), m_icon));
    m_connection.setAttribute(m_icon, XCB_CW_EVENT_MASK, XCB_EVENT_MASK_EXPOSURE);
    const xcb_atom_t info = m_connection.atom("_XEMBED_INFO");
    setNumbers(m_connection.xcb(), m_icon, info, info, {0, 1}); // The version, and to be mapped.
    const xcb_window_t panel = m_panel.owner();
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = panel;
    request.type = m_connection.atom("_NET_SYSTEM_TRAY_OPCODE");
    constexpr uint32_t requestDock = 0;
    request.data.data32[1] = requestDock;
    request.data.data32[2] = m_icon;
    const auto sent =
        xcb_send_event_checked(m_connection.xcb(), false, panel, XCB_EVENT_MASK_NO_EVENT,
                               reinterpret_cast<const char*>(&request));
    succeeded(m_connection.xcb(), sent); // A tray that has just gone will be followed by another.
}

Snapshot X11Tray::groundOfDocked() const {
    xcb_connection_t* const xcb = m_connection.xcb();
    const uint32_t parents = XCB_BACK_PIXMAP_PARENT_RELATIVE;
    if (!m_connection.hasPlainPixels() ||
        !succeeded(
            xcb, xcb_change_window_attributes_checked(xcb, m_icon, XCB_CW_BACK_PIXMAP, &parents)) ||
        !succeeded(xcb, xcb_clear_area_checked(xcb, false, m_icon, 0, 0, 0, 0)))
        return {};
    const auto place = m_connection.reply(xcb_get_geometry_reply, xcb_get_geometry(xcb, m_icon));
    if (!place) return {};
    const PixelRect whole = sized(place->width, place->height);
    return takeSnapshot(xcb, m_icon, whole, whole);
}

} // namespace WindowServer
