#include "WindowServer/X11/Desktop/DisplayList.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/PixelMath.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <utility>

#include <xcb/randr.h>

namespace WindowServer {

namespace {

struct Monitor {
    std::string name;
    PixelRect pixels;
    bool primary = false;
    std::string identity; ///< The EDID, or the name where the monitor gives none.
};

/// Device pixels in a point, which the toolkit tells.
double scaleOf(const std::string& output) {
    for (const QScreen* screen : QGuiApplication::screens())
        if (screen->name().toStdString() == output) return screen->devicePixelRatio();
    const QScreen* primary = QGuiApplication::primaryScreen();
    return primary ? primary->devicePixelRatio() : 1;
}

/// From its EDID; empty where it gives none.
std::string identityOf(Connection& connection, uint32_t output) {
    const auto reply = connection.reply(
        xcb_randr_get_output_property_reply,
        xcb_randr_get_output_property(connection.xcb(), output, connection.atom("EDID"),
                                      XCB_ATOM_ANY, 0, 32, false, false));
    if (!reply || reply->format != 8) return {};
    const auto* edid = xcb_randr_get_output_property_data(reply.get());
    return DisplayNumbers::identityOf(std::string(edid, edid + reply->num_items));
}

std::vector<Monitor> connectedMonitors(Connection& connection) {
    if (!connection.events().randr) {
        const auto& screen = connection.screen();
        const PixelRect whole = sized(screen.width_in_pixels, screen.height_in_pixels);
        return {{"screen", whole, true, "screen"}};
    }
    const auto reply =
        connection.reply(xcb_randr_get_monitors_reply,
                         xcb_randr_get_monitors(connection.xcb(), connection.root(), true));
    if (!reply) return {};

    std::vector<Monitor> monitors;
    auto it = xcb_randr_get_monitors_monitors_iterator(reply.get());
    for (; it.rem; xcb_randr_monitor_info_next(&it)) {
        if (it.data->width == 0 || it.data->height == 0) continue;
        Monitor monitor{connection.nameOf(it.data->name),
                        {it.data->x, it.data->y, it.data->width, it.data->height},
                        it.data->primary != 0,
                        {}};
        if (it.data->nOutput > 0)
            monitor.identity = identityOf(connection, *xcb_randr_monitor_info_outputs(it.data));
        if (monitor.identity.empty()) monitor.identity = monitor.name;
        monitors.push_back(std::move(monitor));
    }
    return monitors;
}

/// The main one first, then by name. Clones, monitors that lie wholly within another, have no
/// display of their own.
std::vector<Display> connectedDisplays(Connection& connection, DisplayNumbers& numbers) {
    std::vector<Monitor> monitors = connectedMonitors(connection);
    std::ranges::sort(monitors, [](const Monitor& a, const Monitor& b) {
        return std::pair(!a.primary, a.name) < std::pair(!b.primary, b.name);
    });

    std::vector<Display> displays;
    for (const Monitor& monitor : monitors) {
        const bool clone = std::ranges::any_of(monitors, [&](const Monitor& other) {
            const bool earlier = &other < &monitor;
            return &other != &monitor && contains(other.pixels, monitor.pixels) &&
                   (earlier || !contains(monitor.pixels, other.pixels));
        });
        if (clone) continue;
        displays.push_back({numbers.numberOf(monitor.identity, monitor.name),
                            monitor.name,
                            monitor.pixels,
                            scaleOf(monitor.name),
                            {},
                            {}});
    }
    return displays;
}

/// A part of the display in points. Origins stay in device pixels and sizes become points, as Qt
/// lays its screens out, so one flip of the y axis leads from here to Qt's coordinates.
CGRect inPoints(const PixelRect& part, const Display& display, const Display& first) {
    const auto points = [&display](int pixels) { return pixels / display.scale; };
    const double firstBottom = first.pixels.y + first.pixels.height / first.scale;
    const double bottom = display.pixels.y + points(part.y + part.height - display.pixels.y);
    return CGRectMake(display.pixels.x - first.pixels.x + points(part.x - display.pixels.x),
                      firstBottom - bottom, points(part.width), points(part.height));
}

} // namespace

DisplayList::DisplayList(Connection& connection) : m_connection(connection), m_struts(connection) {
    m_refresh.setSingleShot(true);
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
    auto displays = connectedDisplays(m_connection, m_numbers);
    m_struts.look();
    for (Display& display : displays) {
        const Display& first = displays.front();
        display.frame = inPoints(display.pixels, display, first);
        display.visibleFrame = inPoints(m_struts.usable(display.pixels), display, first);
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
