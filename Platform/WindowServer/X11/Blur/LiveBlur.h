#pragma once

#include "WindowServer/X11/Blur/Backdrop.h"
#include "WindowServer/X11/Blur/Pyramid.h"
#include "WindowServer/X11/Blur/Scene.h"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <tuple>
#include <vector>

namespace WindowServer {

/// The blur of what lies behind covers, kept up with the desktop. All that it takes of the server
/// is held for its lifetime and given back with it.
class LiveBlur {
public:
    /// One window's picture and the monitor pixels behind it.
    struct Behind {
        Backdrop& backdrop;
        PixelRect pixels;
    };

    /// Sources on their way from the server.
    struct Pending {
        Backdrop& backdrop;
        Pyramid& pyramid;
        Pyramid::Request request;
    };

    explicit LiveBlur(Connection& connection) : m_connection(connection) {}
    ~LiveBlur();
    LiveBlur(const LiveBlur&) = delete;
    LiveBlur& operator=(const LiveBlur&) = delete;

    /// Asks for the sources of the backdrops that `areas`, in root pixels, touch: from the screen
    /// until `follow`, then from the scene behind the covers.
    std::vector<Pending> request(const std::vector<Behind>& behinds,
                                 const std::vector<PixelRect>& areas);

    /// Waits for the sources. Gives the backdrops whose source arrived.
    std::vector<Backdrop*> receive(const std::vector<Pending>& pending) const;

    /// Makes every window on the screen keep its picture in a pixmap of its own, current even where
    /// covers hide it; to be called before the first one is shown.
    void hold();

    /// Draws a cover straight to the screen while others are redirected. To be called after `hold`.
    void exempt(xcb_window_t cover);

    /// Follows the desktop from now on. `shows` tells the windows that are part of it.
    void follow(std::function<bool(xcb_window_t)> shows);

    bool isFollowing() const { return m_scene != nullptr; }

    /// True where the picture may have changed, so that a frame is due.
    bool handle(const xcb_generic_event_t& event) { return m_scene && m_scene->handle(event); }

    /// Brings the scene up to date; gives what changed, in root pixels.
    std::vector<PixelRect> update() { return m_scene->update(); }

private:
    Pyramid& pyramidFor(const Backdrop& backdrop);

    Connection& m_connection;
    bool m_holds = false;
    std::set<xcb_window_t> m_exempted;
    std::unique_ptr<Scene> m_scene;
    /// Scratch pictures, shared by backdrops of one size, halvings, width and height.
    std::map<std::tuple<int, int, int>, std::unique_ptr<Pyramid>> m_pyramids;
};

} // namespace WindowServer
