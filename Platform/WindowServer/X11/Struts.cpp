#include "WindowServer/X11/Struts.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/PixelMath.h"

#include <algorithm>

namespace WindowServer {

namespace {

constexpr uint32_t plainStrut = 4;    ///< Widths: left, right, top, bottom.
constexpr uint32_t partialStrut = 12; ///< And the first and the last pixel along each.

std::vector<uint32_t> numbersOf(const Owned<xcb_get_property_reply_t>& reply) {
    if (!reply || reply->format != 32) return {};
    const auto* numbers = static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
    return {numbers, numbers + reply->value_len};
}

} // namespace

/// Everything asked about one window, in flight together with the others' questions.
struct Struts::Queries {
    xcb_window_t window;
    xcb_get_property_cookie_t type;
    xcb_get_property_cookie_t plain;
    xcb_get_property_cookie_t partial;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t place;
};

Struts::Struts(Connection& connection) : m_connection(connection) {}

bool Struts::handle(const xcb_generic_event_t& event) const {
    switch (typeOf(event)) {
    case XCB_PROPERTY_NOTIFY: {
        const auto& notify = as<xcb_property_notify_event_t>(event);
        if (notify.window == m_connection.root())
            return notify.atom == m_connection.atom("_NET_CLIENT_LIST");
        return notify.atom == m_connection.atom("_NET_WM_STRUT") ||
               notify.atom == m_connection.atom("_NET_WM_STRUT_PARTIAL");
    }
    case XCB_MAP_NOTIFY: // Panels that nobody manages appear like this, and popups many a time.
        return !m_hasList && !as<xcb_map_notify_event_t>(event).override_redirect;
    case XCB_UNMAP_NOTIFY:
        return isPanel(as<xcb_unmap_notify_event_t>(event).window);
    case XCB_DESTROY_NOTIFY:
        return isPanel(as<xcb_destroy_notify_event_t>(event).window);
    default:
        return false;
    }
}

bool Struts::isPanel(xcb_window_t window) const {
    return std::ranges::find(m_panels, window, &Panel::window) != m_panels.end();
}

void Struts::look() {
    const auto geometry = m_connection.reply(
        xcb_get_geometry_reply, xcb_get_geometry(m_connection.xcb(), m_connection.root()));
    if (!geometry) return;
    m_screen = sized(geometry->width, geometry->height);
    std::vector<Queries> inFlight;
    for (const xcb_window_t window : candidates())
        inFlight.push_back(ask(window));
    m_panels.clear();
    for (const Queries& queries : inFlight)
        read(queries);
}

/// The windows that a window manager lists; without one, the children of the root.
std::vector<xcb_window_t> Struts::candidates() {
    xcb_connection_t* const xcb = m_connection.xcb();
    const auto list = m_connection.reply(xcb_get_property_reply,
                                         xcb_get_property(xcb, false, m_connection.root(),
                                                          m_connection.atom("_NET_CLIENT_LIST"),
                                                          XCB_ATOM_WINDOW, 0, 0x10000));
    m_hasList = list && list->format == 32;
    if (m_hasList) return numbersOf(list);
    const auto tree =
        m_connection.reply(xcb_query_tree_reply, xcb_query_tree(xcb, m_connection.root()));
    if (!tree) return {};
    const xcb_window_t* const children = xcb_query_tree_children(tree.get());
    return {children, children + tree->children_len};
}

Struts::Queries Struts::ask(xcb_window_t window) {
    xcb_connection_t* const xcb = m_connection.xcb();
    const auto property = [&](const char* name, xcb_atom_t type, uint32_t length) {
        return xcb_get_property(xcb, false, window, m_connection.atom(name), type, 0, length);
    };
    return {window,
            property("_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, 8),
            property("_NET_WM_STRUT", XCB_ATOM_CARDINAL, plainStrut),
            property("_NET_WM_STRUT_PARTIAL", XCB_ATOM_CARDINAL, partialStrut),
            xcb_get_window_attributes(xcb, window),
            xcb_get_geometry(xcb, window),
            xcb_translate_coordinates(xcb, window, m_connection.root(), 0, 0)};
}

void Struts::read(const Queries& queries) {
    const auto types = numbersOf(m_connection.reply(xcb_get_property_reply, queries.type));
    const auto plain = numbersOf(m_connection.reply(xcb_get_property_reply, queries.plain));
    const auto partial = numbersOf(m_connection.reply(xcb_get_property_reply, queries.partial));
    const auto attributes = m_connection.reply(xcb_get_window_attributes_reply, queries.attributes);
    const auto geometry = m_connection.reply(xcb_get_geometry_reply, queries.geometry);
    const auto place = m_connection.reply(xcb_translate_coordinates_reply, queries.place);
    if (!attributes || !geometry || !place) return;
    const auto dock = m_connection.atom("_NET_WM_WINDOW_TYPE_DOCK");
    const bool isDock = std::ranges::find(types, dock) != types.end();
    const auto& strut = partial.size() == partialStrut ? partial : plain;
    if (!isDock && strut.empty()) return;
    listenToPanel(m_connection, queries.window);
    Panel panel{
        queries.window, {place->dst_x, place->dst_y, geometry->width, geometry->height}, {}};
    if (attributes->map_state == XCB_MAP_STATE_VIEWABLE) panel.strips = stripsOf(strut);
    m_panels.push_back(std::move(panel));
}

std::vector<Struts::Strip> Struts::stripsOf(const std::vector<uint32_t>& strut) const {
    if (strut.size() < plainStrut) return {};
    const auto number = [&](size_t i) { return static_cast<int>(std::min(strut[i], 0x7fffu)); };
    std::vector<Strip> strips;
    for (const Edge edge : {Left, Right, Top, Bottom}) {
        const int width = number(edge);
        const bool upright = edge == Left || edge == Right;
        int start = 0;
        int end = upright ? m_screen.height : m_screen.width;
        if (strut.size() == partialStrut) {
            start = number(plainStrut + 2 * edge);
            end = number(plainStrut + 2 * edge + 1) + 1;
        }
        const int x = edge == Right ? m_screen.width - width : upright ? 0 : start;
        const int y = edge == Bottom ? m_screen.height - width : upright ? start : 0;
        const PixelRect area =
            upright ? PixelRect{x, y, width, end - start} : PixelRect{x, y, end - start, width};
        if (!isEmpty(area)) strips.push_back({edge, area});
    }
    return strips;
}

PixelRect Struts::usable(const PixelRect& monitor) const {
    int left = monitor.x;
    int top = monitor.y;
    int right = monitor.x + monitor.width;
    int bottom = monitor.y + monitor.height;
    for (const Panel& panel : m_panels) {
        // A strut counts from the edge of the screen, so it crosses the monitors on the way.
        if (isEmpty(intersection(panel.area, monitor))) continue;
        for (const auto& [edge, area] : panel.strips) {
            if (isEmpty(intersection(area, monitor))) continue;
            if (edge == Left) left = std::max(left, area.x + area.width);
            if (edge == Right) right = std::min(right, area.x);
            if (edge == Top) top = std::max(top, area.y + area.height);
            if (edge == Bottom) bottom = std::min(bottom, area.y);
        }
    }
    const PixelRect rest{left, top, right - left, bottom - top};
    return isEmpty(rest) ? monitor : rest;
}

} // namespace WindowServer
