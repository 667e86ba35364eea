#include "WindowServer/X11/Stacking.h"

#include "WindowServer/X11/Connection.h"

#include <algorithm>
#include <vector>

namespace WindowServer {

namespace {

// So many restackings in a second happen at once, more than popups ever need; past them one each
// 8 ms, which a program that answers every restacking by raising itself cannot drive any higher.
constexpr int atOncePerSecond = 250;
constexpr int backOffMilliseconds = 8;

template <typename Event> const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

} // namespace

Stacking::Stacking(Connection& connection) : m_connection(connection) {
    m_later.setSingleShot(true);
    m_later.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_later, &QTimer::timeout, &m_later, [this] { restack(); });
}

void Stacking::add(xcb_window_t window, int level) { m_levels[window] = level; }

void Stacking::remove(xcb_window_t window) { m_levels.erase(window); }

void Stacking::restack() {
    std::vector<std::pair<int, xcb_window_t>> topDown;
    for (const auto& [window, level] : m_levels)
        topDown.emplace_back(level, window);
    std::ranges::sort(topDown, std::greater{});
    // Each goes right below the one above it, so windows already in place do not move at all.
    xcb_window_t above = XCB_NONE;
    for (const auto& [level, window] : topDown) {
        if (above == XCB_NONE) {
            const uint32_t values[] = {XCB_STACK_MODE_ABOVE};
            xcb_configure_window(m_connection.xcb(), window, XCB_CONFIG_WINDOW_STACK_MODE, values);
        } else {
            const uint32_t values[] = {above, XCB_STACK_MODE_BELOW};
            xcb_configure_window(m_connection.xcb(), window,
                                 XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE, values);
        }
        above = window;
    }
    m_connection.flush();
}

void Stacking::handle(const xcb_generic_event_t& event) {
    if (!m_levels.empty() && isIntrusion(event)) putBack();
}

bool Stacking::isIntrusion(const xcb_generic_event_t& event) const {
    switch (event.response_type & 0x7f) {
    case XCB_CREATE_NOTIFY:
        return !holds(as<xcb_create_notify_event_t>(event).window);
    case XCB_MAP_NOTIFY:
        return !holds(as<xcb_map_notify_event_t>(event).window);
    case XCB_REPARENT_NOTIFY:
        return as<xcb_reparent_notify_event_t>(event).parent == m_connection.root();
    case XCB_CIRCULATE_NOTIFY:
        return true;
    case XCB_CONFIGURE_NOTIFY: {
        const auto& notify = as<xcb_configure_notify_event_t>(event);
        // Ours moves when we restack it, and when someone else lowers it.
        return holds(notify.window) ? !isOnTop() : holds(notify.above_sibling);
    }
    default:
        return false;
    }
}

bool Stacking::isOnTop() const {
    const auto tree = m_connection.reply(xcb_query_tree_reply,
                                         xcb_query_tree(m_connection.xcb(), m_connection.root()));
    if (!tree) return true;
    const xcb_window_t* const end = xcb_query_tree_children(tree.get()) + tree->children_len;
    const auto count = std::min(m_levels.size(), static_cast<size_t>(tree->children_len));
    return std::all_of(end - count, end, [this](xcb_window_t window) { return holds(window); });
}

void Stacking::putBack() {
    if (m_later.isActive()) return;
    if (!m_spell.isValid() || m_spell.elapsed() >= 1000) {
        m_spell.start();
        m_count = 0;
    }
    if (++m_count <= atOncePerSecond)
        restack();
    else
        m_later.start(backOffMilliseconds);
}

} // namespace WindowServer
