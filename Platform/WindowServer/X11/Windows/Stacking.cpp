#include "WindowServer/X11/Windows/Stacking.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace WindowServer {

namespace {

// So many restackings a second happen at once, more than popups ever need. Past that there is one
// each 8 ms, however often a rival raises itself.
constexpr int atOncePerSecond = 250;
constexpr int backOffMilliseconds = 8;

} // namespace

Stacking::Stacking(Connection& connection) : m_connection(connection) {
    m_later.setSingleShot(true);
    m_later.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_later, &QTimer::timeout, &m_later, [this] { restack(); });
}

void Stacking::add(xcb_window_t window, int level) {
    const auto known = std::ranges::find(m_order, window, &Entry::window);
    if (known != m_order.end() && known->level == level) return;
    remove(window);
    m_stale = true;
    m_order.insert(std::ranges::upper_bound(m_order, level, {}, &Entry::level), {window, level});
}

void Stacking::listen(bool covered) {
    uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    if (covered || !m_order.empty())
        mask |= XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    if (std::exchange(m_heard, mask) == mask) return;
    m_connection.setAttribute(m_connection.root(), XCB_CW_EVENT_MASK, mask);
}

void Stacking::restackIfStale() {
    if (m_stale) restack();
}

void Stacking::remove(xcb_window_t window) {
    std::erase_if(m_order, [window](const Entry& entry) { return entry.window == window; });
}

bool Stacking::holds(xcb_window_t window) const {
    return std::ranges::find(m_order, window, &Entry::window) != m_order.end();
}

void Stacking::restack() {
    m_stale = false;
    const auto wanted = wantedTop(m_connection.children(m_connection.root()));
    // Each goes right below the one above it, so windows already in place do not move at all.
    xcb_window_t above = XCB_NONE;
    for (auto window = wanted.rbegin(); window != wanted.rend(); ++window) {
        const bool isTop = above == XCB_NONE;
        m_connection.stack(*window, isTop ? XCB_STACK_MODE_ABOVE : XCB_STACK_MODE_BELOW, above);
        above = *window;
    }
    m_connection.flush();
}

/// Ours in their order, but for those that are not children of the root now: the toolkit makes and
/// destroys its windows on another connection, and the next one is stacked by its neighbour.
std::vector<xcb_window_t> Stacking::wantedTop(const std::vector<xcb_window_t>& onScreen) const {
    std::vector<xcb_window_t> wanted;
    for (const Entry& entry : m_order)
        if (std::ranges::find(onScreen, entry.window) != onScreen.end())
            wanted.push_back(entry.window);
    return wanted;
}

void Stacking::handle(const xcb_generic_event_t& event) {
    if (!m_order.empty() && isIntrusion(event)) putBack();
}

bool Stacking::isIntrusion(const xcb_generic_event_t& event) const {
    switch (typeOf(event)) {
    case XCB_CREATE_NOTIFY:
    case XCB_MAP_NOTIFY:
        return !holds(subjectOf(event)) || !isInOrder();
    case XCB_REPARENT_NOTIFY:
        return as<xcb_reparent_notify_event_t>(event).parent == m_connection.root();
    case XCB_CIRCULATE_NOTIFY:
        return true;
    case XCB_CONFIGURE_NOTIFY:
        // Ours moves when we restack it, and when someone else lowers it.
        return holds(subjectOf(event))
                   ? !isInOrder()
                   : holds(as<xcb_configure_notify_event_t>(event).above_sibling);
    default:
        return false;
    }
}

bool Stacking::isInOrder() const {
    const auto onScreen = m_connection.children(m_connection.root());
    const auto wanted = wantedTop(onScreen);
    return std::equal(wanted.rbegin(), wanted.rend(), onScreen.rbegin());
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
