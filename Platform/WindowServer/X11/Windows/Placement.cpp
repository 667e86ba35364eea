#include "WindowServer/X11/Windows/Placement.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/PixelMath.h"

#include <QCoreApplication>
#include <QRegion>

#include <cmath>

namespace WindowServer {

namespace {

/// To compare shapes by: the server joins rectangles as it likes.
QRegion regionOf(const std::vector<PixelRect>& rectangles) {
    QRegion region;
    for (const PixelRect& r : rectangles)
        region += QRect(r.x, r.y, r.width, r.height);
    return region;
}

/// Our own changes are announced by the same events, so the shapes are compared.
void mendShape(const Connection& connection, const Kept& kept,
               const xcb_shape_notify_event_t& event) {
    xcb_connection_t* const xcb = connection.xcb();
    const auto wanted = kept.shapes.find(event.shape_kind);
    if (wanted != kept.shapes.end()) {
        const auto reply =
            connection.reply(xcb_shape_get_rectangles_reply,
                             xcb_shape_get_rectangles(xcb, kept.window, event.shape_kind));
        if (!reply) return; // It has gone.
        std::vector<PixelRect> found;
        const auto* rectangles = xcb_shape_get_rectangles_rectangles(reply.get());
        for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i)
            found.push_back(fromX(rectangles[i]));
        if (regionOf(found) != regionOf(wanted->second)) setShape(xcb, kept.window, *wanted);
    } else if (event.shaped) {
        xcb_shape_mask(xcb, XCB_SHAPE_SO_SET, event.shape_kind, kept.window, 0, 0, XCB_PIXMAP_NONE);
    }
    connection.flush();
}

} // namespace

PixelRect pixelsOf(const CGRect& frame, const Display& display) {
    const auto pixels = [&display](double points) {
        return static_cast<int>(std::lround(points * display.scale));
    };
    const CGRect& all = display.frame;
    return {display.pixels.x + pixels(CGRectGetMinX(frame) - CGRectGetMinX(all)),
            display.pixels.y + pixels(CGRectGetMaxY(all) - CGRectGetMaxY(frame)),
            pixels(CGRectGetWidth(frame)), pixels(CGRectGetHeight(frame))};
}

void setClass(xcb_connection_t* connection, xcb_window_t window, const std::string& instance) {
    const std::string program = QCoreApplication::arguments().value(0).toStdString();
    setText(connection, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING,
            instance + '\0' + program + '\0');
}

void configure(xcb_connection_t* connection, xcb_window_t window, const PixelRect& place) {
    const uint32_t values[] = {static_cast<uint32_t>(place.x), static_cast<uint32_t>(place.y),
                               static_cast<uint32_t>(place.width),
                               static_cast<uint32_t>(place.height), 0};
    xcb_configure_window(connection, window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT | XCB_CONFIG_WINDOW_BORDER_WIDTH,
                         values);
}

void setShape(xcb_connection_t* connection, xcb_window_t window, const Shapes::value_type& shape) {
    std::vector<xcb_rectangle_t> rectangles;
    for (const PixelRect& rectangle : shape.second)
        rectangles.push_back(toX(rectangle));
    xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, shape.first, XCB_CLIP_ORDERING_UNSORTED,
                         window, 0, 0, static_cast<uint32_t>(rectangles.size()), rectangles.data());
}

void dropInput(Connection& connection, xcb_window_t window) {
    if (connection.hasShape()) setShape(connection.xcb(), window, *noInput.begin());
}

bool mend(const Connection& connection, const Kept& kept, const xcb_generic_event_t& event) {
    const int type = typeOf(event);
    if (connection.hasShape() && type == connection.events().shape + XCB_SHAPE_NOTIFY) {
        const auto& notify = as<xcb_shape_notify_event_t>(event);
        if (notify.affected_window == kept.window) mendShape(connection, kept, notify);
        return false;
    }
    if (subjectOf(event) != kept.window) return false;
    if (type == XCB_CONFIGURE_NOTIFY) {
        const auto& notify = as<xcb_configure_notify_event_t>(event);
        const PixelRect now{notify.x, notify.y, notify.width, notify.height};
        const PixelRect wanted = isEmpty(kept.place) ? now : kept.place;
        if (now == wanted && notify.border_width == 0) return false;
        configure(connection.xcb(), kept.window, wanted);
        connection.flush();
    }
    return type == XCB_UNMAP_NOTIFY || type == XCB_DESTROY_NOTIFY ||
           (type == XCB_REPARENT_NOTIFY &&
            as<xcb_reparent_notify_event_t>(event).parent != kept.parent);
}

} // namespace WindowServer
