#include "WindowServer/X11/Windows/CursorThemeFilter.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"

#include <QGuiApplication>
#include <QScreen>

namespace WindowServer {

CursorThemeFilter::CursorThemeFilter(Connection& connection)
    : QObject(qGuiApp), m_settings(connection.atom("_XSETTINGS_SETTINGS")) {
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this] { m_monitorHasGone = true; });
    qGuiApp->installNativeEventFilter(this);
}

bool CursorThemeFilter::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
    if (!m_monitorHasGone || type != "xcb_generic_event_t") return false;
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    return typeOf(event) == XCB_PROPERTY_NOTIFY &&
           as<xcb_property_notify_event_t>(event).atom == m_settings;
}

} // namespace WindowServer
