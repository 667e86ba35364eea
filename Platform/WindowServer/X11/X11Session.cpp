#include "WindowServer/X11/X11Session.h"

#include "Foundation/NSLog.h"
#include "WindowServer/X11/Event.h"

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace WindowServer {

namespace {

/// Works around a fault of Qt 6.4: at a change of the cursor theme it calls the cursors of all
/// monitors that there ever were, and those of unplugged ones are freed memory. Once a monitor has
/// gone, the desktop's settings are kept from Qt. Belongs to the application, over whose connection
/// the toolkit hears.
class CursorThemeFilter : public QObject, public QAbstractNativeEventFilter {
public:
    explicit CursorThemeFilter(xcb_atom_t settings) : QObject(qGuiApp), m_settings(settings) {
        connect(qGuiApp, &QGuiApplication::screenRemoved, this,
                [this] { m_monitorHasGone = true; });
        qGuiApp->installNativeEventFilter(this);
    }

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr*) override {
        if (!m_monitorHasGone || type != "xcb_generic_event_t") return false;
        const auto& event = *static_cast<const xcb_generic_event_t*>(message);
        return typeOf(event) == XCB_PROPERTY_NOTIFY &&
               as<xcb_property_notify_event_t>(event).atom == m_settings;
    }

private:
    const xcb_atom_t m_settings;
    bool m_monitorHasGone = false;
};

} // namespace

X11Session::X11Session(std::unique_ptr<Connection> connection)
    : m_connection(std::move(connection)), m_displays(*m_connection),
      m_compositor(*m_connection, "_NET_WM_CM_S"), m_tray(*m_connection), m_settings(*m_connection),
      m_key(*m_connection), m_stacking(*m_connection),
      m_windows(*m_connection, m_displays, m_compositor, m_stacking),
      m_covers(*m_connection, m_displays, m_compositor, m_stacking) {}

void X11Session::attach() {
    m_connection->onEvent = [this](const xcb_generic_event_t& event) { handle(event); };
    m_connection->onRefusal = [this] { coverPlainly(); };
    m_connection->attach();
    new CursorThemeFilter(m_connection->atom("_XSETTINGS_SETTINGS"));
    m_compositor.onChanged = [this] {
        m_covers.compositorChanged();
        if (m_windows.onCompositingChanged) m_windows.onCompositingChanged();
    };
    m_displays.onRefreshed = [this] {
        m_covers.scheduleCommit();
        m_windows.placeAgain();
    };
    m_windows.onChanged = [this] { m_covers.scheduleCommit(); };
    m_stacking.listen(false);
    m_displays.attach();
    // The screen is clear when the process has ended.
    QObject::connect(qGuiApp, &QGuiApplication::aboutToQuit, qGuiApp,
                     [this] { m_covers.leaveScreen(); });
}

void X11Session::handle(const xcb_generic_event_t& event) {
    m_tray.handle(event);
    m_key.handle(event);
    m_compositor.handle(event);
    m_settings.handle(event);
    m_displays.handle(event);
    m_covers.handle(event);
    m_windows.handle(event);
    m_stacking.handle(event);
    m_displays.handlePanels(event); // Last, for it may have to ask the server.
}

/// What was refused drags after it all that was to be made of it, so the blur begins afresh when a
/// cover is shown next.
void X11Session::coverPlainly() {
    if (!std::exchange(m_wasRefused, true))
        NSLog("X11: the server refused a request, as it does when it is short of memory: the cover "
              "is plain dark until the next one.");
    m_covers.coverPlainly();
    m_connection->excuseRefusals();
    m_connection->flush();
}

} // namespace WindowServer
