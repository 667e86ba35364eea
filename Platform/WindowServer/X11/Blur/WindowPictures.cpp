#include "WindowServer/X11/Blur/WindowPictures.h"

#include "WindowServer/X11/Blur/Scaling.h"
#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/PixelMath.h"

#include <algorithm>
#include <utility>

#include <xcb/composite.h>
#include <xcb/shape.h>
#include <xcb/xfixes.h>

namespace WindowServer {

namespace {

/// Reduced, a shape of more rectangles is taken for its bounding box: for a blur it hardly differs.
constexpr int finestShape = 64;

} // namespace

/// Everything asked about one window, in flight together with the others' questions.
struct WindowPictures::Queries {
    xcb_window_t id;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
    xcb_shape_query_extents_cookie_t extents;
    xcb_shape_get_rectangles_cookie_t shape;
};

WindowPictures::WindowPictures(Connection& connection, std::function<bool(xcb_window_t)> shows,
                               int reduction)
    : m_connection(connection), m_shows(std::move(shows)), m_reduction(reduction) {
    readOrder();
    readStaleWindows();
}

/// The last picture goes first: then a server gives less of the memory back to the system, to find
/// it anew at the next toggle.
WindowPictures::~WindowPictures() {
    while (!m_order.empty())
        forget(m_order.back());
}

bool WindowPictures::handle(const xcb_generic_event_t& event) {
    const int type = typeOf(event);
    if (type == m_connection.events().damage + XCB_DAMAGE_NOTIFY) {
        const auto& notify = as<xcb_damage_notify_event_t>(event);
        const auto window = m_windows.find(notify.drawable);
        if (window == m_windows.end()) return false;
        const auto age = static_cast<int32_t>(event.full_sequence - window->second.damageEpoch);
        window->second.damaged |= age >= 0;
        return age >= 0;
    }
    if (m_connection.hasShape() && type == m_connection.events().shape + XCB_SHAPE_NOTIFY) {
        const auto& notify = as<xcb_shape_notify_event_t>(event);
        if (notify.shape_kind != XCB_SHAPE_SK_BOUNDING) return false;
        markStale(notify.affected_window);
        return true;
    }
    return handleStructure(type, event);
}

bool WindowPictures::handleStructure(int type, const xcb_generic_event_t& event) {
    const xcb_window_t id = subjectOf(event);
    if (id == XCB_NONE || (!m_windows.contains(id) && !m_shows(id))) return false;
    switch (type) {
    case XCB_CREATE_NOTIFY:
        m_orderStale = true;
        return false;
    case XCB_DESTROY_NOTIFY:
        forget(id);
        return true;
    case XCB_REPARENT_NOTIFY:
        if (as<xcb_reparent_notify_event_t>(event).parent != m_connection.root()) forget(id);
        break;
    default:
        markStale(id);
    }
    m_orderStale |= type != XCB_MAP_NOTIFY && type != XCB_UNMAP_NOTIFY;
    return true;
}

void WindowPictures::markStale(xcb_window_t id) {
    const auto found = m_windows.find(id);
    if (found == m_windows.end()) {
        m_orderStale = true;
        return;
    }
    Window& window = found->second;
    if (window.viewable && !window.stale) changed(window.outer);
    window.stale = true;
}

void WindowPictures::forget(xcb_window_t id) {
    const auto found = m_windows.find(id);
    if (found == m_windows.end()) return;
    if (found->second.viewable) changed(found->second.outer);
    release(found->second);
    m_windows.erase(found);
    std::erase(m_order, id);
}

void WindowPictures::release(Window& window) {
    if (window.picture) xcb_render_free_picture(m_connection.xcb(), window.picture);
    if (window.damage) xcb_damage_destroy(m_connection.xcb(), window.damage);
    window.picture = 0;
    window.damage = 0;
}

std::vector<PixelRect> WindowPictures::update() {
    if (m_orderStale) readOrder();
    readStaleWindows();
    collectDamage();
    return std::exchange(m_changed, {});
}

std::vector<PixelRect> WindowPictures::places() const {
    std::vector<PixelRect> places;
    for (const xcb_window_t id : m_order)
        if (const Window& window = m_windows.at(id); window.viewable && window.picture)
            places.push_back(window.outer);
    return places;
}

void WindowPictures::readOrder() {
    m_orderStale = false;
    auto order = m_connection.children(m_connection.root());
    if (order.empty()) return; // The server has refused.
    std::erase_if(order, [this](xcb_window_t window) { return !m_shows(window); });
    for (const xcb_window_t id : std::vector(m_order))
        if (std::ranges::find(order, id) == order.end()) forget(id);
    for (size_t i = 0; i < order.size(); ++i) {
        const Window& window = m_windows[order[i]];
        const bool moved = i >= m_order.size() || m_order[i] != order[i];
        if (moved && window.viewable) changed(window.outer);
    }
    m_order = std::move(order);
}

void WindowPictures::readStaleWindows() {
    xcb_connection_t* const xcb = m_connection.xcb();
    std::vector<Queries> inFlight;
    for (const xcb_window_t id : m_order) {
        Window& window = m_windows[id];
        if (!std::exchange(window.stale, false)) continue;
        Queries queries{id, xcb_get_window_attributes(xcb, id), xcb_get_geometry(xcb, id), {}, {}};
        if (m_connection.hasShape()) {
            queries.extents = xcb_shape_query_extents(xcb, id);
            queries.shape = xcb_shape_get_rectangles(xcb, id, XCB_SHAPE_SK_BOUNDING);
        }
        inFlight.push_back(queries);
    }
    std::vector<xcb_window_t> appeared;
    for (const Queries& queries : inFlight) {
        Window& window = m_windows[queries.id];
        read(window, queries);
        readShape(window, queries);
        if (window.viewable) appeared.push_back(queries.id);
    }
    namePixmaps(appeared);
}

void WindowPictures::read(Window& window, const Queries& queries) {
    const auto attributes = m_connection.reply(xcb_get_window_attributes_reply, queries.attributes);
    const auto geometry = m_connection.reply(xcb_get_geometry_reply, queries.geometry);
    window.viewable = attributes && geometry && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
                      attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
    if (!window.viewable) return;
    window.border = geometry->border_width;
    window.outer = {geometry->x, geometry->y, geometry->width + 2 * window.border,
                    geometry->height + 2 * window.border};
    const auto format = m_connection.formatOf(attributes->visual);
    window.opaque = format && !m_connection.hasAlpha(format);
    window.viewable = format != 0;
    changed(window.outer);
}

void WindowPictures::readShape(Window& window, const Queries& queries) {
    window.shape.reset();
    if (!m_connection.hasShape()) return;
    const auto extents = m_connection.reply(xcb_shape_query_extents_reply, queries.extents);
    const auto shape = m_connection.reply(xcb_shape_get_rectangles_reply, queries.shape);
    if (!extents || !shape || !extents->bounding_shaped) return;
    const auto* rectangles = xcb_shape_get_rectangles_rectangles(shape.get());
    const int count = xcb_shape_get_rectangles_rectangles_length(shape.get());
    window.shape.emplace();
    if (m_reduction > 1 && count > finestShape)
        window.shape->push_back(
            {extents->bounding_shape_extents_x, extents->bounding_shape_extents_y,
             extents->bounding_shape_extents_width, extents->bounding_shape_extents_height});
    else
        for (int i = 0; i < count; ++i)
            window.shape->push_back(fromX(rectangles[i]));
}

/// A named pixmap is the window's picture of one size and one mapping: it is named again after
/// each. Where naming fails, the window is gone or is never redirected, as a compositor's own
/// overlay is, and the last picture stays.
void WindowPictures::namePixmaps(const std::vector<xcb_window_t>& ids) {
    xcb_connection_t* const xcb = m_connection.xcb();
    struct Naming {
        xcb_window_t id;
        xcb_pixmap_t pixmap;
        xcb_void_cookie_t request;
        xcb_get_window_attributes_cookie_t attributes;
    };
    std::vector<Naming> namings;
    for (const xcb_window_t id : ids) {
        const xcb_pixmap_t pixmap = m_connection.newId();
        namings.push_back({id, pixmap, xcb_composite_name_window_pixmap_checked(xcb, id, pixmap),
                           xcb_get_window_attributes(xcb, id)});
    }
    for (const Naming& naming : namings) {
        const bool named = succeeded(xcb, naming.request);
        const auto attributes =
            m_connection.reply(xcb_get_window_attributes_reply, naming.attributes);
        if (!named) continue;
        if (attributes) {
            Window& window = m_windows[naming.id];
            if (window.picture) xcb_render_free_picture(xcb, window.picture);
            window.picture = m_connection.newId();
            const uint32_t repeat = XCB_RENDER_REPEAT_PAD;
            xcb_render_create_picture(xcb, window.picture, naming.pixmap,
                                      m_connection.formatOf(attributes->visual),
                                      XCB_RENDER_CP_REPEAT, &repeat);
            setScale(xcb, window.picture, m_reduction);
            if (!window.damage) {
                window.damage = m_connection.newId();
                xcb_damage_create(xcb, window.damage, naming.id, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
                if (m_connection.hasShape()) xcb_shape_select_input(xcb, naming.id, true);
            }
            // All of the window is drawn anew in any case, so earlier damage is no news.
            window.damageEpoch =
                xcb_damage_subtract(xcb, window.damage, XCB_NONE, XCB_NONE).sequence;
            window.damaged = false;
        }
        xcb_free_pixmap(xcb, naming.pixmap);
    }
}

void WindowPictures::collectDamage() {
    xcb_connection_t* const xcb = m_connection.xcb();
    struct Fetch {
        const Window& window;
        xcb_xfixes_region_t region;
        xcb_xfixes_fetch_region_cookie_t cookie;
    };
    std::vector<Fetch> fetches;
    for (auto& [id, window] : m_windows) {
        if (!std::exchange(window.damaged, false) || !window.viewable) continue;
        const xcb_xfixes_region_t region = m_connection.newId();
        xcb_xfixes_create_region(xcb, region, 0, nullptr);
        xcb_damage_subtract(xcb, window.damage, XCB_NONE, region);
        fetches.push_back({window, region, xcb_xfixes_fetch_region(xcb, region)});
        xcb_xfixes_destroy_region(xcb, region);
    }
    for (const Fetch& fetch : fetches) {
        const auto region = m_connection.reply(xcb_xfixes_fetch_region_reply, fetch.cookie);
        if (!region) continue;
        const int border = fetch.window.border;
        const PixelRect damaged = translated(fromX(region->extents), fetch.window.outer.x + border,
                                             fetch.window.outer.y + border);
        changed(intersection(damaged, fetch.window.outer));
    }
}

void WindowPictures::draw(xcb_render_picture_t target, const PixelRect& area, int originX,
                          int originY) const {
    const size_t lowest = lowestVisible(area);
    for (size_t i = lowest == m_order.size() ? 0 : lowest; i < m_order.size(); ++i)
        drawWindow(m_windows.at(m_order[i]), target, area, originX, originY);
}

/// The index of the topmost window that hides all below it; the number of windows where none does.
size_t WindowPictures::lowestVisible(const PixelRect& area) const {
    for (size_t i = m_order.size(); i-- > 0;) {
        const Window& window = m_windows.at(m_order[i]);
        if (window.viewable && window.picture && window.opaque && !window.shape &&
            contains(window.outer, area))
            return i;
    }
    return m_order.size();
}

/// A window at an odd pixel moves by half a pixel where it is halved, so that every sample stays a
/// whole box.
void WindowPictures::drawWindow(const Window& window, xcb_render_picture_t target,
                                const PixelRect& area, int originX, int originY) const {
    if (!window.viewable || !window.picture) return;
    const PixelRect outer = translated(window.outer, -originX, -originY);
    const PixelRect wanted = translated(area, -originX, -originY);
    const int left = floorDiv(outer.x, m_reduction);
    const int top = floorDiv(outer.y, m_reduction);
    const auto draw = [&](const PixelRect& part) {
        const PixelRect visible = intersection(part, wanted);
        if (isEmpty(visible)) return;
        const PixelRect to = reduced(visible, m_reduction);
        composite(m_connection.xcb(),
                  window.opaque ? XCB_RENDER_PICT_OP_SRC : XCB_RENDER_PICT_OP_OVER, window.picture,
                  target, to.x - left, to.y - top, to);
    };
    if (!window.shape) return draw(outer);
    for (const PixelRect& part : *window.shape)
        draw(intersection(translated(part, outer.x + window.border, outer.y + window.border),
                          outer));
}

} // namespace WindowServer
