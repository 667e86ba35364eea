#pragma once

#include "WindowServer/PixelRect.h"
#include "WindowServer/X11/Blur/Drawable.h"
#include "WindowServer/X11/Blur/WindowPictures.h"

#include <functional>
#include <vector>

#include <xcb/render.h>
#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// The desktop as it looks without the covers: every other window of the screen over the root's
/// picture.
class Scene : public Drawable {
public:
    /// `shows` tells the windows that are part of the picture. To be made once they are redirected.
    Scene(Connection& connection, std::function<bool(xcb_window_t)> shows);
    ~Scene() override;
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    /// Takes note of what an event changes. True where the picture may have changed.
    bool handle(const xcb_generic_event_t& event);

    /// Brings the picture up to date and gives the areas, in root pixels, that have changed since
    /// the last call: at the first call the whole screen, then often nothing.
    std::vector<PixelRect> update();

    void drawHalf(xcb_render_picture_t target, const PixelRect& area, int originX,
                  int originY) override;

private:
    void readRootPicture();
    xcb_void_cookie_t createRootPicture(xcb_pixmap_t pixmap) const;
    xcb_pixmap_t rootColor() const;
    void drawRoot(xcb_render_picture_t target, const PixelRect& area, int originX, int originY);

    Connection& m_connection;
    WindowPictures m_windows;
    bool m_isNew = true; ///< All of it counts as changed.
    bool m_rootStale = false;
    xcb_atom_t m_rootPixmapAtom;
    xcb_render_picture_t m_rootPicture = 0;
};

} // namespace WindowServer
