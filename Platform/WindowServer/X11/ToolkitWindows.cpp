#include "WindowServer/X11/ToolkitWindows.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/PixelMath.h"

#include <QGuiApplication>

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
    const std::string name = instance + '\0' + "nimbrel-lite" + '\0';
    xcb_change_property(toolkitConnection(), XCB_PROP_MODE_REPLACE,
                        static_cast<xcb_window_t>(window), XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<uint32_t>(name.size()), name.data());
}

void setToolkitShape(Connection& connection, ToolkitWindow window, Session::Region region,
                     const std::vector<PixelRect>& rectangles) {
    if (!connection.hasShape()) return;
    std::vector<xcb_rectangle_t> shape;
    for (const PixelRect& rectangle : rectangles)
        shape.push_back(toX(rectangle));
    const auto kind = region == Session::Region::Input ? XCB_SHAPE_SK_INPUT : XCB_SHAPE_SK_BOUNDING;
    xcb_shape_rectangles(toolkitConnection(), XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED,
                         static_cast<xcb_window_t>(window), 0, 0,
                         static_cast<uint32_t>(shape.size()), shape.data());
}

void setToolkitShadowMargin(Connection& connection, ToolkitWindow window, int margin) {
    const auto width = static_cast<uint32_t>(margin);
    setNumbers(connection, window, "_GTK_FRAME_EXTENTS", {width, width, width, width});
    setNumbers(connection, window, "_COMPTON_SHADOW", {0}); // Some go by this one alone.
}

} // namespace WindowServer
