#pragma once

#include "WindowServer/Session.h"
#include "WindowServer/X11/Drawable.h"
#include "WindowServer/X11/Reply.h"

#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

#include <xcb/damage.h>
#include <xcb/render.h>
#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// The desktop as it looks without the covers: every other window of the screen, bottom to top,
/// over the root's picture, drawn from the windows' own pixmaps. Needs a `Redirection` held
/// meanwhile.
class Scene : public Drawable {
public:
    /// `hidden` tells the windows that are no part of the picture. To be made before these stand on
    /// the screen: what a root shows can only be seen there.
    Scene(Connection& connection, std::function<bool(xcb_window_t)> hidden);
    ~Scene() override;
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    /// Takes note of what an event changes. True where the picture may have changed.
    bool handle(const xcb_generic_event_t& event);

    /// Brings windows and their pixmaps up to date and gives the areas, in root pixels, that have
    /// changed since the last call: at the first call the whole screen, then often nothing.
    std::vector<PixelRect> update();

    void drawHalf(xcb_render_picture_t target, const PixelRect& area, int originX,
                  int originY) override;

private:
    struct Window {
        PixelRect outer; ///< With the border, in root pixels.
        int border = 0;
        bool viewable = false;
        bool stale = true; ///< Geometry and pixmap are to be asked for anew.
        bool damaged = false;
        bool opaque = true;
        xcb_render_picture_t picture = 0;
        xcb_damage_damage_t damage = 0;
        uint32_t damageEpoch = 0; ///< Damage events before this request are of the window's birth.
        std::optional<std::vector<PixelRect>> shape; ///< Within the border; unset if plain.
    };
    struct Queries;

    void markStale(xcb_window_t id);
    void forget(xcb_window_t id);
    void release(Window& window);
    void changed(const PixelRect& area) { m_changed.push_back(area); }

    void refreshWindows();
    void readOrder();
    void readStaleWindows();
    void read(Window& window, const Queries& queries);
    void readShape(Window& window, const Queries& queries);
    void namePixmaps(const std::vector<xcb_window_t>& ids);
    void collectDamage();
    void readRootPicture();
    xcb_render_color_t visibleRootColor() const;
    xcb_render_color_t screenColor(int x, int y) const;

    size_t lowestVisible(const PixelRect& area) const;
    void drawRoot(xcb_render_picture_t target, const PixelRect& area, int originX, int originY);
    void drawWindow(const Window& window, xcb_render_picture_t target, const PixelRect& area,
                    int originX, int originY);

    Connection& m_connection;
    std::function<bool(xcb_window_t)> m_hidden;
    std::vector<xcb_window_t> m_order; ///< Bottom to top.
    std::unordered_map<xcb_window_t, Window> m_windows;
    std::vector<PixelRect> m_changed;
    bool m_orderStale = true;
    bool m_rootStale = true;
    xcb_atom_t m_rootPixmapAtom;
    xcb_render_picture_t m_rootPicture = 0;
    xcb_render_color_t m_rootColor{};
};

} // namespace WindowServer
