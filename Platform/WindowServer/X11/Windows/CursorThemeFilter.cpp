#include "WindowServer/X11/Windows/CursorThemeFilter.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"

#include <QGuiApplication>
#include <QScreen>

namespace WindowServer {

CursorThemeFilter::CursorThemeFilter(Connection& connection)
    : QObject(qGuiApp), m_connection(connection),
      m_selection(
          connection.atom(("_XSETTINGS_S" + std::to_string(connection.screenNumber())).c_str())),
      m_settings(connection.atom("_XSETTINGS_SETTINGS")) {
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &CursorThemeFilter::monitorGone);
    qGuiApp->installNativeEventFilter(this);
}

void CursorThemeFilter::monitorGone() {
    if (!m_known.isNull()) return;
    const auto owner = m_connection.reply(xcb_get_selection_owner_reply,
                                          xcb_get_selection_owner(m_connection.xcb(), m_selection));
    m_known = themeSerial(owner ? owner->owner : xcb_window_t{XCB_WINDOW_NONE});
}

/// Its four bytes, which stand behind the name. Empty where there is none.
QByteArray CursorThemeFilter::themeSerial(xcb_window_t owner) const {
    constexpr uint32_t most = 0x4000; // In units of four bytes.
    const auto reply = m_connection.reply(
        xcb_get_property_reply,
        xcb_get_property(m_connection.xcb(), false, owner, m_settings, m_settings, 0, most));
    if (!reply || reply->format != 8) return "";
    const QByteArray settings(static_cast<const char*>(xcb_get_property_value(reply.get())),
                              xcb_get_property_value_length(reply.get()));
    const QByteArray name("Gtk/CursorThemeName\0", 20); // Filled up to whole units.
    const auto at = settings.indexOf(name);
    return at < 0 ? "" : settings.mid(at + name.size(), 4);
}

bool CursorThemeFilter::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
    if (m_known.isNull() || type != "xcb_generic_event_t") return false;
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    if (typeOf(event) != XCB_PROPERTY_NOTIFY) return false;
    const auto& notify = as<xcb_property_notify_event_t>(event);
    return notify.atom == m_settings && themeSerial(notify.window) != m_known;
}

} // namespace WindowServer
