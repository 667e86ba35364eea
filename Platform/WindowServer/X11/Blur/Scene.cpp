#include "WindowServer/X11/Blur/Scene.h"

#include "WindowServer/X11/Blur/Scaling.h"
#include "WindowServer/X11/Blur/ScreenPicture.h"
#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/PixelMath.h"

#include <algorithm>
#include <utility>

namespace WindowServer {

Scene::Scene(Connection& connection, std::function<bool(xcb_window_t)> shows)
    : m_connection(connection), m_windows(connection, std::move(shows), 2),
      m_rootPixmapAtom(connection.atom("_XROOTPMAP_ID")) {
    readRootPicture();
    if (!m_rootPicture) m_rootColor = visibleRootColor();
}

Scene::~Scene() {
    if (m_rootPicture) xcb_render_free_picture(m_connection.xcb(), m_rootPicture);
}

bool Scene::handle(const xcb_generic_event_t& event) {
    if (typeOf(event) != XCB_PROPERTY_NOTIFY) return m_windows.handle(event);
    if (as<xcb_property_notify_event_t>(event).atom != m_rootPixmapAtom) return false;
    m_rootStale = true;
    return true;
}

std::vector<PixelRect> Scene::update() {
    auto changed = m_windows.update();
    if (std::exchange(m_rootStale, false)) {
        readRootPicture();
        m_isNew = true;
    }
    return std::exchange(m_isNew, false) ? std::vector{everywhere} : changed;
}

void Scene::readRootPicture() {
    xcb_connection_t* const xcb = m_connection.xcb();
    if (m_rootPicture) xcb_render_free_picture(xcb, m_rootPicture);
    m_rootPicture = 0;
    const auto pixmap = m_connection.numbers(m_connection.root(), m_rootPixmapAtom, 1);
    if (pixmap.empty()) return;
    const xcb_render_picture_t picture = m_connection.newId();
    const uint32_t repeat = XCB_RENDER_REPEAT_NORMAL;
    const auto made = xcb_render_create_picture_checked(
        xcb, picture, pixmap.front(), m_connection.formatOf(m_connection.screen().root_visual),
        XCB_RENDER_CP_REPEAT, &repeat);
    // The property may outlive the program that set it and the pixmap with it.
    if (!succeeded(xcb, made)) return;
    m_rootPicture = picture;
    setScale(xcb, picture, 2);
}

/// A root without a published pixmap shows a plain colour, found where no window hides it.
xcb_render_color_t Scene::visibleRootColor() const {
    const auto& screen = m_connection.screen();
    const auto places = m_windows.places();
    constexpr int step = 32;
    for (int y = 0; y < screen.height_in_pixels; y += step) {
        for (int x = 0; x < screen.width_in_pixels; x += step) {
            const bool hidden = std::ranges::any_of(places, [=](const PixelRect& place) {
                return !isEmpty(intersection(place, {x, y, 2, 2}));
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
    if (!m_windows.hides(area)) drawRoot(target, area, originX, originY);
    m_windows.draw(target, area, originX, originY);
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

} // namespace WindowServer
