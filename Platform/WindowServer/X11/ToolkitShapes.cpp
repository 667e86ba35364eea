#include "WindowServer/X11/ToolkitShapes.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/PixelMath.h"
#include "WindowServer/X11/ToolkitWindows.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include <xcb/shape.h>

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

void ToolkitShapes::set(ToolkitWindow window, Session::Region region,
                        const std::vector<PixelRect>& rectangles) {
    if (!m_connection.hasShape()) return;
    const uint8_t kind =
        region == Session::Region::Input ? XCB_SHAPE_SK_INPUT : XCB_SHAPE_SK_BOUNDING;
    auto& wishes = m_wishes[window];
    if (wishes.empty()) m_unwatched.push_back(window);
    wishes[kind] = rectangles;
    setToolkitShape(window, kind, rectangles);
}

void ToolkitShapes::forget(ToolkitWindow window) {
    m_wishes.erase(window);
    std::erase(m_unwatched, window);
}

void ToolkitShapes::watch() {
    if (m_unwatched.empty()) return;
    settleToolkit();
    for (const ToolkitWindow window : std::exchange(m_unwatched, {})) {
        xcb_shape_select_input(m_connection.xcb(), static_cast<xcb_window_t>(window), true);
        for (const auto& [kind, wish] : m_wishes[window])
            restore(window, kind, wish);
    }
}

void ToolkitShapes::handle(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7f;
    if (type == XCB_DESTROY_NOTIFY)
        forget(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    if (!m_connection.hasShape() || type != m_connection.events().shape + XCB_SHAPE_NOTIFY) return;
    const auto& notify = reinterpret_cast<const xcb_shape_notify_event_t&>(event);
    const auto wishes = m_wishes.find(notify.affected_window);
    if (wishes == m_wishes.end()) return;
    const auto wish = wishes->second.find(notify.shape_kind);
    if (wish != wishes->second.end()) {
        restore(wishes->first, notify.shape_kind, wish->second);
    } else if (notify.shaped) {
        xcb_shape_mask(m_connection.xcb(), XCB_SHAPE_SO_SET, notify.shape_kind,
                       notify.affected_window, 0, 0, XCB_PIXMAP_NONE);
        m_connection.flush();
    }
}

void ToolkitShapes::restore(ToolkitWindow window, uint8_t kind,
                            const std::vector<PixelRect>& wish) const {
    if (!isAsWished(window, kind, wish)) setToolkitShape(window, kind, wish);
}

/// The event alone does not tell whose doing it was: the toolkit's own shapes are told of as well.
bool ToolkitShapes::isAsWished(ToolkitWindow window, uint8_t kind,
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
