#include "WindowServer/X11/Blur/Scaling.h"

#include "WindowServer/X11/Connection.h"

namespace WindowServer {

xcb_render_picture_t makePicture(Connection& connection, xcb_pixmap_t pixmap, int width,
                                 int height) {
    xcb_connection_t* const xcb = connection.xcb();
    xcb_create_pixmap(xcb, 24, pixmap, connection.root(), static_cast<uint16_t>(width),
                      static_cast<uint16_t>(height));
    const xcb_render_picture_t picture = connection.newId();
    const uint32_t repeat = XCB_RENDER_REPEAT_PAD;
    xcb_render_create_picture(xcb, picture, pixmap, connection.rgbFormat(), XCB_RENDER_CP_REPEAT,
                              &repeat);
    return picture;
}

} // namespace WindowServer
