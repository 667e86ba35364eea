#include "WindowServer/X11/Desktop/DisplayList.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <utility>

#include <xcb/randr.h>

namespace WindowServer {

namespace {

double scaleOf(const std::string& output) {
    for (const QScreen* screen : QGuiApplication::screens())
        if (screen->name().toStdString() == output) return screen->devicePixelRatio();
    const QScreen* primary = QGuiApplication::primaryScreen();
    return primary ? primary->devicePixelRatio() : 1;
}

} // namespace

DisplayList::DisplayList(Connection& connection)
    : m_connection(connection), m_monitors(connection), m_struts(connection) {
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(0);
    QObject::connect(&m_refresh, &QTimer::timeout, &m_refresh, [this] { refresh(); });
}

/// The server tells of its monitors; Qt, in its own time, of their scales.
void DisplayList::attach() {
    if (m_connection.events().randr)
        xcb_randr_select_input(m_connection.xcb(), m_connection.root(),
                               XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    const auto refreshLater = [this] { m_refresh.start(); };
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &m_refresh, refreshLater);
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &m_refresh, refreshLater);
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &m_refresh, refreshLater);
    m_displays = read();
}

void DisplayList::handle(const xcb_generic_event_t& event) {
    const int type = typeOf(event);
    const int randr = m_connection.events().randr;
    const bool tellsOfMonitors = randr && (type == randr || type == randr + XCB_RANDR_NOTIFY);
    // All that the server tells of monitors that a user draws up.
    const bool tellsOfRoot =
        type == XCB_CONFIGURE_NOTIFY && subjectOf(event) == m_connection.root();
    if (tellsOfMonitors || tellsOfRoot) m_refresh.start();
}

void DisplayList::handlePanels(const xcb_generic_event_t& event) {
    if (m_struts.handle(event)) m_refresh.start();
}

std::vector<Display> DisplayList::read() {
    auto displays = m_monitors.query(scaleOf);
    m_struts.look();
    for (Display& display : displays) {
        const PixelRect usable = m_struts.usable(display.pixels);
        const double top = display.frame.origin.y + display.frame.size.height;
        const double down = (usable.y - display.pixels.y + usable.height) / display.scale;
        display.visibleFrame =
            CGRectMake(display.frame.origin.x + (usable.x - display.pixels.x) / display.scale,
                       top - down, usable.width / display.scale, usable.height / display.scale);
    }
    return displays;
}

void DisplayList::refresh() {
    auto displays = read();
    if (displays == m_displays) return;
    m_displays = std::move(displays);
    onRefreshed();
    if (onChanged) onChanged();
}

} // namespace WindowServer
