#include "WindowServer/X11/Scene.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/PixelMath.h"
#include "WindowServer/X11/Scaling.h"
#include "WindowServer/X11/ScreenPicture.h"

#include <algorithm>
#include <utility>

#include <xcb/composite.h>
#include <xcb/shape.h>
#include <xcb/xfixes.h>

namespace WindowServer {

namespace {

/// Above this many rectangles a shape is taken for its bounding box: for a blur it hardly differs.
constexpr int finestShape = 64;

template <typename Event> const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

} // namespace

/// Everything asked about one window, in flight together with the others' questions.
struct Scene::Queries {
    xcb_window_t id;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
    xcb_shape_query_extents_cookie_t extents;
    xcb_shape_get_rectangles_cookie_t shape;
};

Scene::Scene(Connection& connection, std::function<bool(xcb_window_t)> hidden)
    : m_connection(connection), m_hidden(std::move(hidden)),
      m_rootPixmapAtom(connection.atom("_XROOTPMAP_ID")) {
    refreshWindows();
    if (!m_rootPicture) m_rootColor = visibleRootColor();
}

Scene::~Scene() {
    for (auto& [id, window] : m_windows)
        release(window);
    if (m_rootPicture) xcb_render_free_picture(m_connection.xcb(), m_rootPicture);
}

bool Scene::handle(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7f;
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
    switch (type) {
    case XCB_CREATE_NOTIFY:
        m_orderStale = true;
        return false;
    case XCB_DESTROY_NOTIFY:
        forget(as<xcb_destroy_notify_event_t>(event).window);
        return true;
    case XCB_MAP_NOTIFY:
        markStale(as<xcb_map_notify_event_t>(event).window);
        return true;
    case XCB_UNMAP_NOTIFY:
        markStale(as<xcb_unmap_notify_event_t>(event).window);
        return true;
    case XCB_CONFIGURE_NOTIFY:
        markStale(as<xcb_configure_notify_event_t>(event).window);
        break;
    case XCB_GRAVITY_NOTIFY:
        markStale(as<xcb_gravity_notify_event_t>(event).window);
        return true;
    case XCB_CIRCULATE_NOTIFY:
        markStale(as<xcb_circulate_notify_event_t>(event).window);
        break;
    case XCB_REPARENT_NOTIFY: {
        const auto& notify = as<xcb_reparent_notify_event_t>(event);
        if (notify.parent != m_connection.root()) forget(notify.window);
        break;
    }
    case XCB_PROPERTY_NOTIFY:
        if (as<xcb_property_notify_event_t>(event).atom != m_rootPixmapAtom) return false;
        m_rootStale = true;
        return true;
    default:
        return false;
    }
    m_orderStale = true;
    return true;
}

void Scene::markStale(xcb_window_t id) {
    const auto found = m_windows.find(id);
    if (found == m_windows.end()) {
        m_orderStale = true;
        return;
    }
    Window& window = found->second;
    if (window.viewable && !window.stale) changed(window.outer);
    window.stale = true;
}

void Scene::forget(xcb_window_t id) {
    const auto found = m_windows.find(id);
    if (found == m_windows.end()) return;
    if (found->second.viewable) changed(found->second.outer);
    release(found->second);
    m_windows.erase(found);
    std::erase(m_order, id);
}

void Scene::release(Window& window) {
    if (window.picture) xcb_render_free_picture(m_connection.xcb(), window.picture);
    if (window.damage) xcb_damage_destroy(m_connection.xcb(), window.damage);
    window.picture = 0;
    window.damage = 0;
}

std::vector<PixelRect> Scene::update() {
    refreshWindows();
    collectDamage();
    return std::exchange(m_changed, {});
}

void Scene::refreshWindows() {
    if (std::exchange(m_rootStale, false)) {
        readRootPicture();
        const auto& screen = m_connection.screen();
        changed(sized(screen.width_in_pixels, screen.height_in_pixels));
    }
    if (std::exchange(m_orderStale, false)) readOrder();
    readStaleWindows();
}

void Scene::readOrder() {
    const auto tree = m_connection.reply(xcb_query_tree_reply,
                                         xcb_query_tree(m_connection.xcb(), m_connection.root()));
    if (!tree) return;
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    std::vector<xcb_window_t> order;
    for (int i = 0; i < tree->children_len; ++i)
        if (!m_hidden(children[i])) order.push_back(children[i]);

    for (const xcb_window_t id : std::vector(m_order))
        if (std::ranges::find(order, id) == order.end()) forget(id);
    for (size_t i = 0; i < order.size(); ++i) {
        const Window& window = m_windows[order[i]];
        const bool moved = i >= m_order.size() || m_order[i] != order[i];
        if (moved && window.viewable) changed(window.outer);
    }
    m_order = std::move(order);
}

void Scene::readStaleWindows() {
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

void Scene::read(Window& window, const Queries& queries) {
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

void Scene::readShape(Window& window, const Queries& queries) {
    window.shape.reset();
    if (!m_connection.hasShape()) return;
    const auto extents = m_connection.reply(xcb_shape_query_extents_reply, queries.extents);
    const auto shape = m_connection.reply(xcb_shape_get_rectangles_reply, queries.shape);
    if (!extents || !shape || !extents->bounding_shaped) return;
    const auto* rectangles = xcb_shape_get_rectangles_rectangles(shape.get());
    const int count = xcb_shape_get_rectangles_rectangles_length(shape.get());
    window.shape.emplace();
    if (count > finestShape)
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
void Scene::namePixmaps(const std::vector<xcb_window_t>& ids) {
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
            setScale(xcb, window.picture, 2);
            if (!window.damage) {
                window.damage = m_connection.newId();
                xcb_damage_create(xcb, window.damage, naming.id, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
                if (m_connection.hasShape()) xcb_shape_select_input(xcb, naming.id, true);
            }
            // The whole window counts as drawn already.
            window.damageEpoch =
                xcb_damage_subtract(xcb, window.damage, XCB_NONE, XCB_NONE).sequence;
            window.damaged = false;
        }
        xcb_free_pixmap(xcb, naming.pixmap);
    }
}

void Scene::collectDamage() {
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

void Scene::readRootPicture() {
    xcb_connection_t* const xcb = m_connection.xcb();
    if (m_rootPicture) xcb_render_free_picture(xcb, m_rootPicture);
    m_rootPicture = 0;
    const auto property = m_connection.reply(
        xcb_get_property_reply,
        xcb_get_property(xcb, false, m_connection.root(), m_rootPixmapAtom, XCB_ATOM_PIXMAP, 0, 1));
    if (!property || property->format != 32 || property->value_len != 1) return;
    const auto pixmap = *static_cast<xcb_pixmap_t*>(xcb_get_property_value(property.get()));
    const xcb_render_picture_t picture = m_connection.newId();
    const uint32_t repeat = XCB_RENDER_REPEAT_NORMAL;
    const auto made = xcb_render_create_picture_checked(
        xcb, picture, pixmap, m_connection.formatOf(m_connection.screen().root_visual),
        XCB_RENDER_CP_REPEAT, &repeat);
    // The property may outlive the program that set it and the pixmap with it.
    if (!succeeded(xcb, made)) return;
    m_rootPicture = picture;
    setScale(xcb, picture, 2);
}

/// A root without a published pixmap shows a plain colour, found where no window hides it.
xcb_render_color_t Scene::visibleRootColor() const {
    const auto& screen = m_connection.screen();
    constexpr int step = 32;
    for (int y = 0; y < screen.height_in_pixels; y += step) {
        for (int x = 0; x < screen.width_in_pixels; x += step) {
            const bool hidden = std::ranges::any_of(m_windows, [=](const auto& entry) {
                return entry.second.viewable &&
                       !isEmpty(intersection(entry.second.outer, {x, y, 2, 2}));
            });
            if (!hidden) return screenColor(x, y);
        }
    }
    return {0, 0, 0, 0xffff};
}

/// Of two by two pixels. Through a picture of a kind known here, for the screen's may be any.
xcb_render_color_t Scene::screenColor(int x, int y) const {
    xcb_connection_t* const xcb = m_connection.xcb();
    const xcb_pixmap_t pixmap = m_connection.newId();
    const xcb_render_picture_t picture = makePicture(m_connection, pixmap, 1, 1);
    ScreenPicture(m_connection).drawHalf(picture, {x, y, 2, 2}, x, y);
    const auto image =
        m_connection.reply(xcb_get_image_reply,
                           xcb_get_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, 0, 0, 1, 1, ~0u));
    xcb_render_free_picture(xcb, picture);
    xcb_free_pixmap(xcb, pixmap);
    if (!image || xcb_get_image_data_length(image.get()) < 4) return {0, 0, 0, 0xffff};
    const uint8_t* bgr = xcb_get_image_data(image.get());
    return {static_cast<uint16_t>(bgr[2] * 257), static_cast<uint16_t>(bgr[1] * 257),
            static_cast<uint16_t>(bgr[0] * 257), 0xffff};
}

void Scene::drawHalf(xcb_render_picture_t target, const PixelRect& area, int originX, int originY) {
    const size_t lowest = lowestVisible(area);
    if (lowest == m_order.size()) drawRoot(target, area, originX, originY);
    for (size_t i = lowest == m_order.size() ? 0 : lowest; i < m_order.size(); ++i)
        drawWindow(m_windows.at(m_order[i]), target, area, originX, originY);
}

/// The index of the topmost window that hides all below it; the number of windows where none does.
size_t Scene::lowestVisible(const PixelRect& area) const {
    for (size_t i = m_order.size(); i-- > 0;) {
        const Window& window = m_windows.at(m_order[i]);
        if (window.viewable && window.picture && window.opaque && !window.shape &&
            contains(window.outer, area))
            return i;
    }
    return m_order.size();
}

void Scene::drawRoot(xcb_render_picture_t target, const PixelRect& area, int originX, int originY) {
    const PixelRect half = reduced(translated(area, -originX, -originY), 2);
    if (!m_rootPicture) {
        const xcb_rectangle_t rectangle = toX(half);
        xcb_render_fill_rectangles(m_connection.xcb(), XCB_RENDER_PICT_OP_SRC, target, m_rootColor,
                                   1, &rectangle);
        return;
    }
    composite(m_connection.xcb(), XCB_RENDER_PICT_OP_SRC, m_rootPicture, target,
              half.x + originX / 2, half.y + originY / 2, half);
}

void Scene::drawWindow(const Window& window, xcb_render_picture_t target, const PixelRect& area,
                       int originX, int originY) {
    if (!window.viewable || !window.picture) return;
    const PixelRect outer = translated(window.outer, -originX, -originY);
    const PixelRect wanted = translated(area, -originX, -originY);
    // A window on an odd pixel moves by half a pixel, so that every sample stays a whole box.
    const int halfX = floorDiv(outer.x, 2);
    const int halfY = floorDiv(outer.y, 2);
    const auto draw = [&](const PixelRect& part) {
        const PixelRect visible = intersection(part, wanted);
        if (isEmpty(visible)) return;
        const PixelRect half = reduced(visible, 2);
        composite(m_connection.xcb(),
                  window.opaque ? XCB_RENDER_PICT_OP_SRC : XCB_RENDER_PICT_OP_OVER, window.picture,
                  target, half.x - halfX, half.y - halfY, half);
    };
    if (!window.shape) return draw(outer);
    for (const PixelRect& part : *window.shape)
        draw(intersection(translated(part, outer.x + window.border, outer.y + window.border),
                          outer));
}

} // namespace WindowServer
