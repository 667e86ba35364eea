#include "WindowServer/X11/Windows/ToolkitGuard.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/PixelMath.h"
#include "WindowServer/X11/Windows/Placement.h"
#include "WindowServer/X11/Windows/ToolkitWindows.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace WindowServer {

namespace {

/// Cut into lines and sorted: the server joins lines that are alike.
std::vector<PixelRect> linesOf(const std::vector<PixelRect>& rectangles) {
    std::vector<PixelRect> lines;
    for (const PixelRect& r : rectangles)
        for (int y = r.y; y < r.y + r.height; ++y)
            lines.push_back({r.x, y, r.width, 1});
    std::ranges::sort(lines, {}, [](const PixelRect& r) { return std::tuple(r.y, r.x, r.width); });
    return lines;
}

} // namespace

void ToolkitGuard::add(ToolkitWindow window) { wishOf(window); }

ToolkitGuard::Wish& ToolkitGuard::wishOf(ToolkitWindow window) {
    Wish& wish = m_wishes[window];
    m_unwatched |= !wish.watched;
    return wish;
}

void ToolkitGuard::place(ToolkitWindow window, const CGRect& frame) {
    Wish& wish = wishOf(window);
    wish.frame = frame;
    restorePlace(window, wish);
}

void ToolkitGuard::placeAgain() const {
    for (const auto& [window, wish] : m_wishes)
        restorePlace(window, wish);
}

void ToolkitGuard::set(ToolkitWindow window, Session::Region region,
                       const std::vector<PixelRect>& rectangles) {
    if (!m_connection.hasShape()) return;
    const uint8_t kind =
        region == Session::Region::Input ? XCB_SHAPE_SK_INPUT : XCB_SHAPE_SK_BOUNDING;
    wishOf(window).shapes[kind] = rectangles;
    setToolkitShape(window, kind, rectangles);
}

void ToolkitGuard::forget(ToolkitWindow window) { m_wishes.erase(window); }

void ToolkitGuard::watch() {
    if (!std::exchange(m_unwatched, false)) return;
    settleToolkit();
    for (auto& [window, wish] : m_wishes) {
        if (std::exchange(wish.watched, true)) continue;
        if (m_connection.hasShape())
            xcb_shape_select_input(m_connection.xcb(), static_cast<xcb_window_t>(window), true);
        restorePlace(window, wish);
        for (const auto& [kind, shape] : wish.shapes)
            restoreShape(window, kind, shape);
    }
}

void ToolkitGuard::handle(const xcb_generic_event_t& event) {
    const int type = typeOf(event);
    if (type == XCB_DESTROY_NOTIFY) {
        forget(as<xcb_destroy_notify_event_t>(event).window);
    } else if (type == XCB_CONFIGURE_NOTIFY) {
        handleConfigure(as<xcb_configure_notify_event_t>(event));
    } else if (m_connection.hasShape() && type == m_connection.events().shape + XCB_SHAPE_NOTIFY) {
        handleShape(as<xcb_shape_notify_event_t>(event));
    }
}

void ToolkitGuard::handleConfigure(const xcb_configure_notify_event_t& event) const {
    const auto found = m_wishes.find(event.window);
    if (found == m_wishes.end() || !found->second.watched) return;
    const PixelRect now{event.x, event.y, event.width, event.height};
    const auto& frame = found->second.frame;
    const PixelRect wanted = frame ? m_pixelsOf(*frame) : now;
    if (isEmpty(wanted) || (now == wanted && event.border_width == 0)) return;
    configure(m_connection.xcb(), event.window, wanted);
    m_connection.flush();
}

void ToolkitGuard::restorePlace(ToolkitWindow window, const Wish& wish) const {
    const PixelRect place = wish.frame ? m_pixelsOf(*wish.frame) : PixelRect();
    if (isEmpty(place)) return;
    // Before it is watched, the server may still have to be told of it.
    if (!wish.watched) return setToolkitPlace(window, place);
    configure(m_connection.xcb(), static_cast<xcb_window_t>(window), place);
    m_connection.flush();
}

void ToolkitGuard::handleShape(const xcb_shape_notify_event_t& event) const {
    const auto found = m_wishes.find(event.affected_window);
    if (found == m_wishes.end()) return;
    const auto& [window, wish] = *found;
    const auto shape = wish.shapes.find(event.shape_kind);
    if (shape != wish.shapes.end()) {
        restoreShape(window, event.shape_kind, shape->second);
    } else if (event.shaped) {
        xcb_shape_mask(m_connection.xcb(), XCB_SHAPE_SO_SET, event.shape_kind,
                       event.affected_window, 0, 0, XCB_PIXMAP_NONE);
        m_connection.flush();
    }
}

void ToolkitGuard::restoreShape(ToolkitWindow window, uint8_t kind,
                                const std::vector<PixelRect>& wish) const {
    if (!hasShape(window, kind, wish)) setToolkitShape(window, kind, wish);
}

/// The event alone does not tell whose doing it was: the toolkit's own shapes are told of as well.
bool ToolkitGuard::hasShape(ToolkitWindow window, uint8_t kind,
                            const std::vector<PixelRect>& wish) const {
    const auto reply = m_connection.reply(
        xcb_shape_get_rectangles_reply,
        xcb_shape_get_rectangles(m_connection.xcb(), static_cast<xcb_window_t>(window), kind));
    if (!reply) return true; // it has gone
    std::vector<PixelRect> found;
    const auto* rectangles = xcb_shape_get_rectangles_rectangles(reply.get());
    for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i)
        found.push_back(fromX(rectangles[i]));
    return linesOf(found) == linesOf(wish);
}

} // namespace WindowServer
