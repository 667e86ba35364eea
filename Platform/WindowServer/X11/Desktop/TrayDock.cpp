#include "WindowServer/X11/Desktop/TrayDock.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/PixelMath.h"
#include "WindowServer/X11/Windows/ToolkitWindows.h"

#include <cstring>

namespace WindowServer {

namespace {

std::vector<uint32_t> numbersOf(Connection& connection, xcb_window_t window, const char* property) {
    constexpr uint32_t most = 16;
    const auto reply = connection.reply(
        xcb_get_property_reply, xcb_get_property(connection.xcb(), false, window,
                                                 connection.atom(property), XCB_ATOM_ANY, 0, most));
    if (!reply || reply->format != 32) return {};
    const auto* const numbers = static_cast<uint32_t*>(xcb_get_property_value(reply.get()));
    return {numbers, numbers + reply->value_len};
}

} // namespace

TrayLook lookOfTray(Connection& connection, xcb_window_t tray) {
    TrayLook look;
    const auto visual = numbersOf(connection, tray, "_NET_SYSTEM_TRAY_VISUAL");
    const auto format = visual.empty() ? 0 : connection.formatOf(visual[0]);
    look.translucent = format && connection.hasAlpha(format);
    // The first of its colours is that of symbols, 16 bits for each of red, green and blue.
    const auto colors = numbersOf(connection, tray, "_NET_SYSTEM_TRAY_COLORS");
    if (colors.size() >= 3)
        look.ink = (colors[0] >> 8 << 16) | (colors[1] >> 8 << 8) | (colors[2] >> 8);
    return look;
}

void dockToolkit(Connection& connection, xcb_window_t tray, ToolkitWindow window) {
    settleToolkit(); // The window exists for this connection from here on.
    const auto icon = static_cast<xcb_window_t>(window);
    succeeded(connection.xcb(), xcb_unmap_window_checked(connection.xcb(), icon));
    const uint32_t structure = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection.xcb(), icon, XCB_CW_EVENT_MASK, &structure);
    const uint32_t versionAndMapped[] = {0, 1};
    const xcb_atom_t info = connection.atom("_XEMBED_INFO");
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, icon, info, info, 32, 2,
                        versionAndMapped);
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = tray;
    request.type = connection.atom("_NET_SYSTEM_TRAY_OPCODE");
    constexpr uint32_t requestDock = 0;
    request.data.data32[1] = requestDock;
    request.data.data32[2] = icon;
    const auto sent = xcb_send_event_checked(connection.xcb(), false, tray, XCB_EVENT_MASK_NO_EVENT,
                                             reinterpret_cast<const char*>(&request));
    succeeded(connection.xcb(), sent); // A tray that has just gone will be followed by another.
}

Snapshot groundOfDocked(Connection& connection, ToolkitWindow window) {
    xcb_connection_t* const xcb = connection.xcb();
    const auto icon = static_cast<xcb_window_t>(window);
    const uint32_t parents = XCB_BACK_PIXMAP_PARENT_RELATIVE;
    if (!connection.hasPlainPixels() ||
        !succeeded(xcb,
                   xcb_change_window_attributes_checked(xcb, icon, XCB_CW_BACK_PIXMAP, &parents)) ||
        !succeeded(xcb, xcb_clear_area_checked(xcb, false, icon, 0, 0, 0, 0)))
        return {};
    const auto place = connection.reply(xcb_get_geometry_reply, xcb_get_geometry(xcb, icon));
    if (!place || place->depth != 24) return {};
    const auto image =
        connection.reply(xcb_get_image_reply, xcb_get_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, icon, 0,
                                                            0, place->width, place->height, ~0u));
    Snapshot ground{sized(place->width, place->height), {}};
    ground.pixels.resize(static_cast<size_t>(place->width) * place->height);
    const size_t bytes = ground.pixels.size() * sizeof(uint32_t);
    if (!image || static_cast<size_t>(xcb_get_image_data_length(image.get())) < bytes) return {};
    std::memcpy(ground.pixels.data(), xcb_get_image_data(image.get()), bytes);
    return ground;
}

} // namespace WindowServer
