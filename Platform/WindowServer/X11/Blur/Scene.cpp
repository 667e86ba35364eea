#include "WindowServer/X11/Blur/Scene.h"

#include "WindowServer/X11/Blur/Scaling.h"
#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/PixelMath.h"

#include <utility>

#include <xcb/composite.h>

namespace WindowServer {

Scene::Scene(Connection& connection, std::function<bool(xcb_window_t)> shows)
    : m_connection(connection), m_windows(connection, std::move(shows), 2),
      m_rootPixmapAtom(connection.atom("_XROOTPMAP_ID")) {
    readRootPicture();
}

Scene::~Scene() { xcb_render_free_picture(m_connection.xcb(), m_rootPicture); }

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
    m_rootPicture = m_connection.newId();
    const auto published = m_connection.numbers(m_connection.root(), m_rootPixmapAtom, 1);
    // The property may outlive the program that set it and the pixmap with it.
    if (published.empty() || !succeeded(xcb, createRootPicture(published.front()))) {
        const xcb_pixmap_t pixmap = rootColor();
        createRootPicture(pixmap);
        xcb_free_pixmap(xcb, pixmap);
    }
    setScale(xcb, m_rootPicture, 2);
}

xcb_void_cookie_t Scene::createRootPicture(xcb_pixmap_t pixmap) const {
    const uint32_t repeat = XCB_RENDER_REPEAT_NORMAL;
    return xcb_render_create_picture_checked(
        m_connection.xcb(), m_rootPicture, pixmap,
        m_connection.formatOf(m_connection.screen().root_visual), XCB_RENDER_CP_REPEAT, &repeat);
}

/// A root without a published pixmap counts as plain. A window beyond the screen takes on the
/// root's background, and its picture is the colour.
xcb_pixmap_t Scene::rootColor() const {
    xcb_connection_t* const xcb = m_connection.xcb();
    const xcb_window_t window = m_connection.newId();
    const xcb_pixmap_t pixmap = m_connection.newId();
    const uint32_t values[] = {XCB_BACK_PIXMAP_PARENT_RELATIVE, true};
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, m_connection.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT, values);
    xcb_map_window(xcb, window);
    xcb_composite_name_window_pixmap(xcb, window, pixmap);
    xcb_destroy_window(xcb, window);
    return pixmap;
}

void Scene::drawHalf(xcb_render_picture_t target, const PixelRect& area, int originX, int originY) {
    if (!m_windows.hides(area)) drawRoot(target, area, originX, originY);
    m_windows.draw(target, area, originX, originY);
}

void Scene::drawRoot(xcb_render_picture_t target, const PixelRect& area, int originX, int originY) {
    const PixelRect half = reduced(translated(area, -originX, -originY), 2);
    composite(m_connection.xcb(), XCB_RENDER_PICT_OP_SRC, m_rootPicture, target,
              half.x + originX / 2, half.y + originY / 2, half);
}

} // namespace WindowServer
