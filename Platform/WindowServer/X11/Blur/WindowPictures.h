#pragma once

#include "WindowServer/PixelRect.h"
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

/// The pictures of some of the screen's windows, in their order and as they stand, drawn from the
/// windows' own pixmaps. These keep up where something redirects the windows meanwhile: a
/// compositor, or a `LiveBlur`.
class WindowPictures {
public:
    /// `shows` chooses the windows; `reduction`, 1 or 2, is how many times smaller they are drawn.
    WindowPictures(Connection& connection, std::function<bool(xcb_window_t)> shows, int reduction);
    ~WindowPictures();
    WindowPictures(const WindowPictures&) = delete;
    WindowPictures& operator=(const WindowPictures&) = delete;

    /// Takes note of what an event changes. True where a picture may have changed.
    bool handle(const xcb_generic_event_t& event);

    /// Brings windows and their pixmaps up to date and gives the areas, in root pixels, that have
    /// changed since the last call.
    std::vector<PixelRect> update();

    /// Where the windows stand that are seen, in root pixels, bottom to top.
    std::vector<PixelRect> places() const;

    /// Whether one of them hides all that lies below the area, in root pixels.
    bool hides(const PixelRect& area) const { return lowestVisible(area) < m_order.size(); }

    /// Draws the area, in root pixels, over what the target has. The target's pixel (0, 0) is the
    /// root's pixel (originX, originY).
    void draw(xcb_render_picture_t target, const PixelRect& area, int originX, int originY) const;

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
        uint32_t damageEpoch = 0; ///< Damage told before this request is no news.
        std::optional<std::vector<PixelRect>> shape; ///< Within the border; unset if plain.
    };
    struct Queries;

    bool handleStructure(int type, const xcb_generic_event_t& event);
    void markStale(xcb_window_t id);
    void forget(xcb_window_t id);
    void release(Window& window);
    void changed(const PixelRect& area) { m_changed.push_back(area); }

    void readOrder();
    void readStaleWindows();
    void read(Window& window, const Queries& queries);
    void readShape(Window& window, const Queries& queries);
    void namePixmaps(const std::vector<xcb_window_t>& ids);
    void collectDamage();

    size_t lowestVisible(const PixelRect& area) const;
    void drawWindow(const Window& window, xcb_render_picture_t target, const PixelRect& area,
                    int originX, int originY) const;

    Connection& m_connection;
    std::function<bool(xcb_window_t)> m_shows;
    int m_reduction;
    std::vector<xcb_window_t> m_order; ///< Bottom to top.
    std::unordered_map<xcb_window_t, Window> m_windows;
    std::vector<PixelRect> m_changed;
    bool m_orderStale = true;
};

} // namespace WindowServer
