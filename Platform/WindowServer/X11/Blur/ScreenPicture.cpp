#include "WindowServer/X11/Blur/ScreenPicture.h"

#include "WindowServer/X11/Blur/Scaling.h"
#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/PixelMath.h"

namespace WindowServer {

ScreenPicture::ScreenPicture(Connection& connection)
    : m_connection(connection), m_picture(connection.newId()) {
    const uint32_t values[] = {XCB_RENDER_REPEAT_PAD, XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS};
    xcb_render_create_picture(connection.xcb(), m_picture, connection.root(),
                              connection.formatOf(connection.screen().root_visual),
                              XCB_RENDER_CP_REPEAT | XCB_RENDER_CP_SUBWINDOW_MODE, values);
    setScale(connection.xcb(), m_picture, 2);
}

ScreenPicture::~ScreenPicture() { xcb_render_free_picture(m_connection.xcb(), m_picture); }

void ScreenPicture::drawHalf(xcb_render_picture_t target, const PixelRect& area, int originX,
                             int originY) {
    const PixelRect half = reduced(translated(area, -originX, -originY), 2);
    composite(m_connection.xcb(), XCB_RENDER_PICT_OP_SRC, m_picture, target, half.x + originX / 2,
              half.y + originY / 2, half);
}

} // namespace WindowServer
