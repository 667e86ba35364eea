#include "WindowServer/X11/Windows/Pane.h"

#include "WindowServer/X11/Blur/Scaling.h"
#include "WindowServer/X11/Blur/WindowPictures.h"
#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/PixelMath.h"

#include <utility>

#include <xcb/xfixes.h>

namespace WindowServer {

namespace {

xcb_window_t makeWindow(Connection& connection, xcb_window_t parent, const PixelRect& place) {
    const xcb_window_t window = connection.newId();
    // Without a background nothing is shown before it is painted.
    const uint32_t values[] = {XCB_BACK_PIXMAP_NONE, XCB_EVENT_MASK_EXPOSURE};
    xcb_create_window(connection.xcb(), XCB_COPY_FROM_PARENT, window, parent,
                      static_cast<int16_t>(place.x), static_cast<int16_t>(place.y),
                      static_cast<uint16_t>(place.width), static_cast<uint16_t>(place.height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXMAP | XCB_CW_EVENT_MASK, values);
    xcb_map_window(connection.xcb(), window);
    return window;
}

} // namespace

Pane::Pane(Connection& connection, xcb_window_t parent, const PixelRect& place,
           const WindowPictures& above, Ground ground)
    : m_connection(connection), m_window{connection, makeWindow(connection, parent, place)},
      m_place(place), m_above(above), m_ground(std::move(ground)), m_bare(connection, m_window.id),
      m_whole(connection, m_window.id) {}

Pane::Window::~Window() { xcb_destroy_window(connection.xcb(), id); }

void Pane::paint(const PixelRect& area) {
    const auto own = [this](const PixelRect& rect) {
        return translated(intersection(rect, m_place), -m_place.x, -m_place.y);
    };
    std::vector<PixelRect> windows;
    for (const PixelRect& place : m_above.places())
        if (const PixelRect window = own(place); !isEmpty(window)) windows.push_back(window);
    const PixelRect wanted = own(area);
    if (isEmpty(wanted)) return;
    leaveOut(windows);
    m_ground(m_bare, wanted);
    for (const PixelRect& window : windows)
        compose(intersection(window, wanted));
}

void Pane::setBackground(uint32_t pixel) const {
    m_connection.setAttribute(m_window.id, XCB_CW_BACK_PIXEL, pixel);
}

/// Cover and window are composed apart and painted in one request there, so nothing flickers.
void Pane::leaveOut(const std::vector<PixelRect>& windows) {
    if (m_leftOut == windows) return;
    m_leftOut = windows;
    std::vector<xcb_rectangle_t> holes;
    for (const PixelRect& window : windows)
        holes.push_back(toX(window));
    xcb_connection_t* const xcb = m_connection.xcb();
    const xcb_xfixes_region_t clip = m_connection.newId();
    const xcb_rectangle_t whole = toX(sized(m_place.width, m_place.height));
    xcb_xfixes_create_region(xcb, clip, static_cast<uint32_t>(holes.size()), holes.data());
    xcb_xfixes_invert_region(xcb, clip, whole, clip);
    xcb_xfixes_set_picture_clip_region(xcb, m_bare.picture(), clip, 0, 0);
    xcb_xfixes_destroy_region(xcb, clip);
}

void Pane::compose(const PixelRect& area) const {
    if (isEmpty(area)) return;
    xcb_connection_t* const xcb = m_connection.xcb();
    const xcb_pixmap_t pixmap = m_connection.newId();
    const xcb_render_picture_t picture = makePicture(m_connection, pixmap, area.width, area.height);
    m_ground({pixmap, picture, area.x, area.y}, area);
    const PixelRect onScreen = translated(area, m_place.x, m_place.y);
    m_above.draw(picture, onScreen, onScreen.x, onScreen.y);
    composite(xcb, XCB_RENDER_PICT_OP_SRC, picture, m_whole.picture(), 0, 0, area);
    xcb_render_free_picture(xcb, picture);
    xcb_free_pixmap(xcb, pixmap);
}

} // namespace WindowServer
