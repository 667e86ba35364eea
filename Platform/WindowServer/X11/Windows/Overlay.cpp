#include "WindowServer/X11/Windows/Overlay.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Desktop/SelectionWatch.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/PixelMath.h"
#include "WindowServer/X11/Windows/Placement.h"

#include <algorithm>
#include <utility>

#include <xcb/composite.h>
#include <xcb/damage.h>
#include <xcb/res.h>
#include <xcb/shape.h>
#include <xcb/xfixes.h>

namespace WindowServer {

Overlay::Overlay(Connection& connection, const SelectionWatch& compositor,
                 std::function<bool(xcb_window_t)> isAbove)
    : m_connection(connection), m_compositor(compositor), m_plate(connection.newId()),
      m_damage(connection.newId()), m_above(connection, std::move(isAbove), 1) {
    xcb_connection_t* const xcb = connection.xcb();
    const auto reply = connection.reply(xcb_composite_get_overlay_window_reply,
                                        xcb_composite_get_overlay_window(xcb, connection.root()));
    if (reply) m_overlay = reply->overlay_win;
    connection.setAttribute(m_overlay, XCB_CW_EVENT_MASK,
                            XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    xcb_shape_select_input(xcb, m_overlay, true);

    // Without a background nothing shows before it is painted. As large as a screen can be, the
    // plate covers a monitor that is plugged in before anybody hears of it.
    const uint32_t values[] = {XCB_BACK_PIXMAP_NONE, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, m_plate, m_overlay, everywhere.x, everywhere.y,
                      everywhere.width, everywhere.height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXMAP | XCB_CW_EVENT_MASK, values);
    dropInput(connection, m_plate);
    xcb_shape_select_input(xcb, m_plate, true);
    xcb_damage_create(xcb, m_damage, m_plate, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    keepWhole();
}

Overlay::~Overlay() {
    xcb_connection_t* const xcb = m_connection.xcb();
    xcb_damage_destroy(xcb, m_damage);
    xcb_destroy_window(xcb, m_plate);
    if (m_formerShape)
        xcb_shape_rectangles(xcb, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                             XCB_CLIP_ORDERING_UNSORTED, m_overlay, 0, 0,
                             static_cast<uint32_t>(m_formerShape->size()), m_formerShape->data());
    xcb_shape_select_input(xcb, m_overlay, false);
    m_connection.setAttribute(m_overlay, XCB_CW_EVENT_MASK, XCB_EVENT_MASK_NO_EVENT);
    xcb_composite_release_overlay_window(xcb, m_connection.root());
    if (m_isComplete) damageAll();
    m_connection.excuseRefusals(); // The plate may have been taken away.
}

/// Not every compositor redraws by itself what the plate has covered.
void Overlay::damageAll() const {
    xcb_connection_t* const xcb = m_connection.xcb();
    const xcb_xfixes_region_t whole = m_connection.newId();
    const xcb_rectangle_t rectangle = toX(everywhere);
    xcb_xfixes_create_region(xcb, whole, 1, &rectangle);
    for (const xcb_window_t window : m_connection.children(m_connection.root()))
        xcb_damage_add(xcb, window, whole);
    xcb_xfixes_destroy_region(xcb, whole);
}

std::unique_ptr<Pane> Overlay::makePane(const PixelRect& place, Pane::Ground ground) const {
    return std::make_unique<Pane>(m_connection, m_plate, place, m_above, std::move(ground));
}

void Overlay::keepLastFrame() const {
    m_connection.setAttribute(m_plate, XCB_CW_BACK_PIXMAP, XCB_BACK_PIXMAP_NONE);
}

void Overlay::show() const {
    raise();
    xcb_map_window(m_connection.xcb(), m_plate);
}

/// The server is grabbed, so that others' paint is not taken for ours.
void Overlay::paint(const std::function<void()>& paintPanes) {
    xcb_connection_t* const xcb = m_connection.xcb();
    xcb_grab_server(xcb);
    paintPanes();
    if (!std::exchange(m_isComplete, true)) {
        m_connection.setAttribute(m_plate, XCB_CW_BACK_PIXEL, m_connection.screen().black_pixel);
        xcb_clear_area(xcb, false, m_plate, 0, 0, 0, 0); // What no monitor shows today.
    }
    m_paintedAt = xcb_damage_subtract(xcb, m_damage, XCB_NONE, XCB_NONE).sequence;
    xcb_ungrab_server(xcb);
    m_connection.flush();
}

std::vector<PixelRect> Overlay::update() {
    auto areas = m_above.update();
    if (std::exchange(m_isOverpainted, false)) areas = {everywhere};
    return areas;
}

bool Overlay::handle(const xcb_generic_event_t& event) {
    const int type = typeOf(event);
    if (type == m_connection.events().damage + XCB_DAMAGE_NOTIFY &&
        as<xcb_damage_notify_event_t>(event).damage == m_damage)
        return handlePaint(event);
    if (mend(m_connection, {m_plate, m_overlay, everywhere, noInput}, event) && onLost) onLost();
    if (type == m_connection.events().shape + XCB_SHAPE_NOTIFY) {
        const auto& notify = as<xcb_shape_notify_event_t>(event);
        const bool isCut =
            notify.affected_window == m_overlay && notify.shape_kind == XCB_SHAPE_SK_BOUNDING;
        if (isCut && event.full_sequence != m_wholeAt) keepWhole();
        const bool takesInput = notify.affected_window == m_overlay &&
                                notify.shape_kind == XCB_SHAPE_SK_INPUT &&
                                (!notify.shaped || notify.extents_width > 0);
        if (takesInput && !m_compositor.isOwned()) compositorEnded();
    }
    const xcb_window_t subject = subjectOf(event);
    if (subject == m_connection.root() && type == XCB_CONFIGURE_NOTIFY) {
        const auto& root = as<xcb_configure_notify_event_t>(event); // Compositors follow it late.
        configure(m_connection.xcb(), m_overlay, sized(root.width, root.height));
    }
    if (subject == m_overlay && type == XCB_UNMAP_NOTIFY)
        xcb_map_window(m_connection.xcb(), m_overlay);
    // Compositors order their own windows within the overlay window as they like. All events about
    // a window begin alike: with the window that tells of it.
    const bool isAboutChild = subject != XCB_NONE && subject != m_overlay && subject != m_plate;
    if (isAboutChild && as<xcb_map_notify_event_t>(event).event == m_overlay) raise();
    return m_above.handle(event);
}

/// Other programs' paint is painted over, and some accidents are allowed; a compositor that draws
/// over the plate does it in each frame.
bool Overlay::handlePaint(const xcb_generic_event_t& event) {
    constexpr int accidents = 2;
    if (isBefore(event, m_paintedAt)) return false;
    m_foreignPaints = isDrawnOver() ? m_foreignPaints + 1 : 0;
    if (m_foreignPaints <= accidents) return m_isOverpainted = true;
    if (onDrawnOver) onDrawnOver();
    return false;
}

/// A compositor that draws into a child window leaves the child's siblings alone, and GL clips to
/// what a window's children leave; Render may draw over children.
bool Overlay::isDrawnOver() const {
    return m_connection.children(m_overlay).size() == 1 && !hasContexts();
}

bool Overlay::hasContexts() const {
    const auto* extension = xcb_get_extension_data(m_connection.xcb(), &xcb_res_id);
    if (!extension || !extension->present) return false;
    const auto reply = m_connection.reply(
        xcb_res_query_client_resources_reply,
        xcb_res_query_client_resources(m_connection.xcb(), m_compositor.owner()));
    if (!reply) return false;
    const auto* types = xcb_res_query_client_resources_types(reply.get());
    const xcb_atom_t context = m_connection.atom("GLXContext");
    return std::any_of(types, types + reply->num_types, [context](const xcb_res_type_t& type) {
        return type.resource_type == context && type.count > 0;
    });
}

/// Undoes the holes that a compositor cuts for full-screen windows that it does not redirect.
void Overlay::keepWhole() {
    xcb_connection_t* const xcb = m_connection.xcb();
    const auto extentsAsked = xcb_shape_query_extents(xcb, m_overlay);
    const auto boundsAsked = xcb_shape_get_rectangles(xcb, m_overlay, XCB_SHAPE_SK_BOUNDING);
    const auto extents = m_connection.reply(xcb_shape_query_extents_reply, extentsAsked);
    const auto bounds = m_connection.reply(xcb_shape_get_rectangles_reply, boundsAsked);
    m_formerShape.reset();
    if (!extents || !bounds || !extents->bounding_shaped) return;
    const auto* first = xcb_shape_get_rectangles_rectangles(bounds.get());
    m_formerShape.emplace(first, first + xcb_shape_get_rectangles_rectangles_length(bounds.get()));
    m_wholeAt = xcb_shape_mask(xcb, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, m_overlay, 0, 0,
                               XCB_PIXMAP_NONE)
                    .sequence;
    xcb_no_operation(xcb); // Later shape events are others' doing.
    m_connection.flush();
}

/// The overlay window's input shape belongs to its compositor, which takes input for its panels
/// there. One that has ended may have left any shape behind.
void Overlay::compositorEnded() const {
    dropInput(m_connection, m_overlay);
    m_connection.flush();
}

void Overlay::raise() const { m_connection.stack(m_plate, XCB_STACK_MODE_ABOVE); }

} // namespace WindowServer
