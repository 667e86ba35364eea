#include "WindowServer/X11/Desktop/Struts.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/PixelMath.h"

#include <algorithm>

namespace WindowServer {

namespace {

constexpr uint32_t plainStrut = 4;    ///< Widths: left, right, top, bottom.
constexpr uint32_t partialStrut = 12; ///< And the first and the last pixel along each.

/// The first workspace's stand for all: a shell's own panels are the same on each.
constexpr char shellsAreas[] = "_GTK_WORKAREAS_D0";
constexpr uint32_t numbersOfAnArea = 4; ///< The place, the width and the height.

} // namespace

Struts::Struts(Connection& connection) : m_connection(connection) {}

bool Struts::handle(const xcb_generic_event_t& event) const {
    switch (typeOf(event)) {
    case XCB_PROPERTY_NOTIFY: {
        const auto& notify = as<xcb_property_notify_event_t>(event);
        if (notify.window == m_connection.root())
            return notify.atom == m_connection.atom("_NET_CLIENT_LIST") ||
                   notify.atom == m_connection.atom(shellsAreas);
        return notify.atom == m_connection.atom("_NET_WM_STRUT") ||
               notify.atom == m_connection.atom("_NET_WM_STRUT_PARTIAL");
    }
    case XCB_MAP_NOTIFY: { // All that tells of a panel that no window manager lists.
        const auto family = withChildren({as<xcb_map_notify_event_t>(event).window});
        return !panelsAmong({family.begin(), family.end()}).empty();
    }
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
    m_workAreas = workAreas();
    m_panels = panelsAmong(candidates());
}

/// The windows that a window manager lists, and the root's children and grandchildren: some
/// managers leave panels out of their lists.
std::set<xcb_window_t> Struts::candidates() const {
    const auto listed =
        m_connection.numbers(m_connection.root(), m_connection.atom("_NET_CLIENT_LIST"), 0x10000);
    std::set<xcb_window_t> result(listed.begin(), listed.end());
    for (const xcb_window_t window : withChildren(withChildren({m_connection.root()})))
        result.insert(window);
    return result;
}

std::vector<xcb_window_t> Struts::withChildren(const std::vector<xcb_window_t>& windows) const {
    std::vector<xcb_query_tree_cookie_t> inFlight;
    for (const xcb_window_t window : windows)
        inFlight.push_back(xcb_query_tree(m_connection.xcb(), window));
    std::vector<xcb_window_t> result = windows;
    for (const auto& cookie : inFlight) {
        const auto tree = m_connection.reply(xcb_query_tree_reply, cookie);
        if (!tree) continue;
        const xcb_window_t* const children = xcb_query_tree_children(tree.get());
        result.insert(result.end(), children, children + tree->children_len);
    }
    return result;
}

/// Those of the windows that are panels, whether they want room or not at the moment. They are
/// listened to from here on.
std::vector<Struts::Panel> Struts::panelsAmong(const std::set<xcb_window_t>& windows) const {
    struct Questions {
        xcb_window_t window;
        xcb_get_property_cookie_t type, plain, partial;
    };
    std::vector<Questions> inFlight; // All windows' together.
    for (const xcb_window_t window : windows) {
        const auto ask = [&](const char* name, xcb_atom_t type, uint32_t length) {
            return xcb_get_property(m_connection.xcb(), false, window, m_connection.atom(name),
                                    type, 0, length);
        };
        inFlight.push_back({window, ask("_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, 8),
                            ask("_NET_WM_STRUT", XCB_ATOM_CARDINAL, plainStrut),
                            ask("_NET_WM_STRUT_PARTIAL", XCB_ATOM_CARDINAL, partialStrut)});
    }
    const auto dock = m_connection.atom("_NET_WM_WINDOW_TYPE_DOCK");
    const auto answer = [this](xcb_get_property_cookie_t question) {
        return numbersOf(m_connection.reply(xcb_get_property_reply, question));
    };
    std::vector<Panel> panels;
    for (const auto& [window, type, plain, partial] : inFlight) {
        const auto types = answer(type);
        const auto widths = answer(plain);
        const auto strips = answer(partial);
        const bool isDock = std::ranges::find(types, dock) != types.end();
        const auto& strut = strips.size() == partialStrut ? strips : widths;
        if (!isDock && strut.empty()) continue;
        listenToPanel(m_connection, window);
        xcb_connection_t* const xcb = m_connection.xcb();
        const auto asksAttributes = xcb_get_window_attributes(xcb, window);
        const auto asksGeometry = xcb_get_geometry(xcb, window);
        const auto asksPlace = xcb_translate_coordinates(xcb, window, m_connection.root(), 0, 0);
        const auto attributes = m_connection.reply(xcb_get_window_attributes_reply, asksAttributes);
        const auto geometry = m_connection.reply(xcb_get_geometry_reply, asksGeometry);
        const auto place = m_connection.reply(xcb_translate_coordinates_reply, asksPlace);
        if (!attributes || !geometry || !place) continue;
        Panel panel{window, {place->dst_x, place->dst_y, geometry->width, geometry->height}, {}};
        if (attributes->map_state == XCB_MAP_STATE_VIEWABLE) panel.strips = stripsOf(strut);
        panels.push_back(std::move(panel));
    }
    return panels;
}

std::vector<PixelRect> Struts::workAreas() const {
    const auto numbers =
        m_connection.numbers(m_connection.root(), m_connection.atom(shellsAreas), 0x1000);
    std::vector<PixelRect> areas;
    for (size_t i = 0; i + numbersOfAnArea <= numbers.size(); i += numbersOfAnArea) {
        const auto number = [&](size_t which) { return static_cast<int>(numbers[i + which]); };
        areas.push_back({number(0), number(1), number(2), number(3)});
    }
    return areas;
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
        const size_t along = plainStrut + 2 * edge;
        // Some leave both ends at 0 and mean all of the edge.
        if (strut.size() == partialStrut && (strut[along] != 0 || strut[along + 1] != 0)) {
            start = number(along);
            end = number(along + 1) + 1;
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
    for (const PixelRect& area : m_workAreas) {
        if (isEmpty(area) || !contains(monitor, area)) continue;
        left = std::max(left, area.x);
        top = std::max(top, area.y);
        right = std::min(right, area.x + area.width);
        bottom = std::min(bottom, area.y + area.height);
    }
    const PixelRect rest{left, top, right - left, bottom - top};
    return isEmpty(rest) ? monitor : rest;
}

} // namespace WindowServer
