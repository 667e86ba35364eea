#include "WindowServer/X11/Windows/ToolkitWindows.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/PixelMath.h"
#include "WindowServer/X11/Windows/Placement.h"
#include "WindowServer/X11/Windows/WindowClass.h"

#include <QGuiApplication>

#include <cstring>

#include <xcb/shape.h>

namespace WindowServer {

namespace {

xcb_connection_t* toolkitConnection() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

void setNumbers(Connection& connection, ToolkitWindow window, const char* property,
                const std::vector<uint32_t>& numbers) {
    xcb_change_property(toolkitConnection(), XCB_PROP_MODE_REPLACE,
                        static_cast<xcb_window_t>(window), connection.atom(property),
                        XCB_ATOM_CARDINAL, 32, static_cast<uint32_t>(numbers.size()),
                        numbers.data());
}

} // namespace

void setToolkitName(Connection&, ToolkitWindow window, const std::string& instance) {
    const std::string name = windowClass(instance);
    xcb_change_property(toolkitConnection(), XCB_PROP_MODE_REPLACE,
                        static_cast<xcb_window_t>(window), XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<uint32_t>(name.size()), name.data());
}

void setToolkitShape(ToolkitWindow window, uint8_t kind, const std::vector<PixelRect>& rectangles) {
    std::vector<xcb_rectangle_t> shape;
    for (const PixelRect& rectangle : rectangles)
        shape.push_back(toX(rectangle));
    xcb_shape_rectangles(toolkitConnection(), XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED,
                         static_cast<xcb_window_t>(window), 0, 0,
                         static_cast<uint32_t>(shape.size()), shape.data());
    xcb_flush(toolkitConnection());
}

void setToolkitPlace(ToolkitWindow window, const PixelRect& place) {
    configure(toolkitConnection(), static_cast<xcb_window_t>(window), place);
    xcb_flush(toolkitConnection());
}

void settleToolkit() {
    xcb_connection_t* const xcb = toolkitConnection();
    await(xcb, xcb_get_input_focus_reply, xcb_get_input_focus(xcb));
}

void setToolkitShadowMargin(Connection& connection, ToolkitWindow window, int margin) {
    const auto width = static_cast<uint32_t>(margin);
    setNumbers(connection, window, "_GTK_FRAME_EXTENTS", {width, width, width, width});
    setNumbers(connection, window, "_COMPTON_SHADOW", {0}); // Some go by this one alone.
}

void focusToolkit(ToolkitWindow window) {
    xcb_set_input_focus(toolkitConnection(), XCB_INPUT_FOCUS_PARENT,
                        static_cast<xcb_window_t>(window), XCB_CURRENT_TIME);
    xcb_flush(toolkitConnection());
}

Snapshot grabAroundToolkit(Connection& connection, ToolkitWindow window, int margin) {
    xcb_connection_t* const xcb = toolkitConnection();
    const auto id = static_cast<xcb_window_t>(window);
    const auto place = await(xcb, xcb_get_geometry_reply, xcb_get_geometry(xcb, id));
    const auto corner = // In a tray the window's own place is one in another window.
        await(xcb, xcb_translate_coordinates_reply,
              xcb_translate_coordinates(xcb, id, connection.root(), 0, 0));
    const auto root = await(xcb, xcb_get_geometry_reply, xcb_get_geometry(xcb, connection.root()));
    if (!place || !corner || !root || !connection.hasPlainPixels() || root->depth != 24) return {};
    const PixelRect area =
        intersection(grown({corner->dst_x, corner->dst_y, place->width, place->height}, margin),
                     sized(root->width, root->height));
    if (isEmpty(area)) return {};
    const auto image = await(
        xcb, xcb_get_image_reply,
        xcb_get_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, connection.root(),
                      static_cast<int16_t>(area.x), static_cast<int16_t>(area.y),
                      static_cast<uint16_t>(area.width), static_cast<uint16_t>(area.height), ~0u));
    Snapshot snapshot{translated(area, -corner->dst_x, -corner->dst_y), {}};
    snapshot.pixels.resize(static_cast<size_t>(area.width) * area.height);
    const size_t bytes = snapshot.pixels.size() * sizeof(uint32_t);
    if (!image || static_cast<size_t>(xcb_get_image_data_length(image.get())) < bytes) return {};
    std::memcpy(snapshot.pixels.data(), xcb_get_image_data(image.get()), bytes);
    return snapshot;
}

} // namespace WindowServer
