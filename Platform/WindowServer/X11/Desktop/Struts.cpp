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
        const auto family = withChildren({subjectOf(event)});
        return !panelsAmong({family.begin(), family.end()}).empty();
    }
    case XCB_UNMAP_NOTIFY:
    case XCB_DESTROY_NOTIFY:
        return std::ranges::find(m_panels, subjectOf(event), &Panel::window) != m_panels.end();
    default:
        return false;
    }
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
    const auto found = withChildren(withChildren({m_connection.root()}));
    std::set<xcb_window_t> all(listed.begin(), listed.end());
    all.insert(found.begin(), found.end());
    return all;
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
    const auto told =
        m_connection.numbers(m_connection.root(), m_connection.atom(shellsAreas), 0x1000);
    const std::vector<int> numbers(told.begin(), told.end());
    std::vector<PixelRect> areas;
    for (size_t i = 0; i + numbersOfAnArea <= numbers.size(); i += numbersOfAnArea)
        areas.push_back({numbers[i], numbers[i + 1], numbers[i + 2], numbers[i + 3]});
    return areas;
}

std::vector<Struts::Strip> Struts::stripsOf(const std::vector<uint32_t>& strut) const {
    if (strut.size() < plainStrut) return {};
    const auto number = [&](size_t i) { return static_cast<int>(std::min(strut[i], 0x7fffu)); };
    const int left = number(0), right = number(1), top = number(2), bottom = number(3);
    const int width = m_screen.width, height = m_screen.height;
    std::vector<Strip> strips{
        {{0, 0, left, height}, {left, 0, width - left, height}},
        {{width - right, 0, right, height}, {0, 0, width - right, height}},
        {{0, 0, width, top}, {0, top, width, height - top}},
        {{0, height - bottom, width, bottom}, {0, 0, width, height - bottom}},
    };
    for (size_t edge = 0; strut.size() == partialStrut && edge < strips.size(); ++edge) {
        const int start = number(plainStrut + 2 * edge);
        const int end = number(plainStrut + 2 * edge + 1) + 1;
        if (start == 0 && end == 1) continue; // Some mean all of the edge by that.
        const PixelRect along = edge < 2 ? PixelRect{0, start, width, end - start}
                                         : PixelRect{start, 0, end - start, height};
        strips[edge].area = intersection(strips[edge].area, along);
    }
    return strips;
}

PixelRect Struts::usable(const PixelRect& monitor) const {
    PixelRect rest = monitor;
    for (const Panel& panel : m_panels) {
        // A strut counts from the edge of the screen, so it crosses the monitors on the way.
        if (isEmpty(intersection(panel.area, monitor))) continue;
        for (const Strip& strip : panel.strips)
            if (!isEmpty(intersection(strip.area, monitor))) rest = intersection(rest, strip.rest);
    }
    // A shell knows nothing of monitors that a user draws up: its area lies across them.
    for (const PixelRect& area : m_workAreas)
        if (!isEmpty(intersection(area, monitor))) rest = intersection(rest, area);
    return isEmpty(rest) ? monitor : rest;
}

} // namespace WindowServer
