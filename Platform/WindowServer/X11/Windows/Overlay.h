#pragma once

#include "WindowServer/PixelRect.h"
#include "WindowServer/X11/Blur/WindowPictures.h"
#include "WindowServer/X11/Windows/Pane.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <xcb/damage.h>
#include <xcb/xcb.h>

namespace WindowServer {

class SelectionWatch;
class Connection;

/// A plate in front of all that a compositor shows, its own views among it: a child of the overlay
/// window, which the server keeps above every other window, and which no compositor orders, fades
/// or makes translucent. Windows of ours above the covers are shown there as pictures, while the
/// real ones stay beneath and take the input. Held only while covered, since it keeps full-screen
/// programs from drawing straight to the screen.
class Overlay {
public:
    /// `isAbove` is true for windows of ours above the covers.
    Overlay(Connection& connection, const SelectionWatch& compositor,
            std::function<bool(xcb_window_t)> isAbove);
    ~Overlay();
    Overlay(const Overlay&) = delete;
    Overlay& operator=(const Overlay&) = delete;

    /// Whether the compositor draws into the overlay window itself, over all of its children, so
    /// that a plate there is of no use. Not known for sure until it has drawn.
    bool isDrawnOver() const;
    /// Called where a compositor that does so has drawn over the plate.
    std::function<void()> onDrawnOver;
    /// Called where another program took the plate away.
    std::function<void()> onLost;

    /// The pane must not outlive the overlay.
    std::unique_ptr<Pane> makePane(const PixelRect& place, Pane::Ground ground) const;

    /// Panes that go from now on leave their last picture until the compositor draws anew.
    void keepLastFrame() const;

    /// To be called as the compositor has ended: all input goes to the windows beneath from now on.
    void compositorEnded() const;

    /// To be called while panes are painted for the first time.
    void show() const;
    /// All painting of panes goes through here; any other paint counts as another program's.
    void paint(const std::function<void()>& paintPanes);

    /// True where something is to be painted anew.
    bool handle(const xcb_generic_event_t& event);
    /// What is to be painted anew, in root pixels.
    std::vector<PixelRect> update();

private:
    void damageAll() const;
    bool handlePaint(const xcb_generic_event_t& event);
    void keepWhole();
    bool hasContexts() const;
    void raise() const;

    Connection& m_connection;
    const SelectionWatch& m_compositor;
    xcb_window_t m_overlay = XCB_NONE; ///< The server's.
    xcb_window_t m_plate;
    xcb_damage_damage_t m_damage;
    WindowPictures m_above;
    uint32_t m_paintedAt = 0;  ///< Damage before this request is our own paint.
    bool m_isComplete = false; ///< Whether all of it has been painted once.
    bool m_isOverpainted = false;
    int m_foreignPaints = 0;
    /// The shape that the compositor gave the overlay window, to be given back; none where it had
    /// none. One without rectangles hides all of it.
    std::optional<std::vector<xcb_rectangle_t>> m_formerShape;
    uint32_t m_wholeAt = 0; ///< The request that last made it whole.
};

} // namespace WindowServer
