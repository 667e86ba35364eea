#pragma once

#include "WindowServer/PixelRect.h"
#include "WindowServer/X11/Blur/Canvas.h"

#include <functional>
#include <vector>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;
class WindowPictures;

/// What a compositor's monitor shows while it is covered: the cover's picture, and over it the
/// windows of ours that stand above the cover.
class Pane {
public:
    /// Paints a part of the cover, in the cover's pixels.
    using Ground = std::function<void(const Canvas& canvas, const PixelRect& area)>;

    /// A child of `parent`, whose pixels are the root's. `above` must outlive it.
    Pane(Connection& connection, xcb_window_t parent, const PixelRect& place,
         const WindowPictures& above, Ground ground);
    Pane(const Pane&) = delete;
    Pane& operator=(const Pane&) = delete;

    xcb_window_t window() const { return m_window.id; }
    const PixelRect& place() const { return m_place; }

    /// Paints what of the area, in root pixels, is the pane's.
    void paint(const PixelRect& area);
    /// Shown where the server has lost what was painted, until it is painted anew.
    void setBackground(uint32_t pixel) const;

private:
    void leaveOut(const std::vector<PixelRect>& windows);
    void compose(const PixelRect& area) const;

    /// A member, so that it is destroyed after the pictures of it.
    struct Window {
        Connection& connection;
        const xcb_window_t id;
        ~Window();
    };

    Connection& m_connection;
    const Window m_window;
    PixelRect m_place;
    const WindowPictures& m_above;
    Ground m_ground;
    WindowCanvas m_bare; ///< Clipped to where no window of ours stands.
    WindowCanvas m_whole;
    std::vector<PixelRect> m_leftOut; ///< In the pane's pixels.
};

} // namespace WindowServer
