#pragma once

#include "WindowServer/Surfaces.h"
#include "WindowServer/X11/Blur/Backdrop.h"
#include "WindowServer/X11/Blur/Canvas.h"
#include "WindowServer/X11/Windows/Pane.h"
#include "WindowServer/X11/Windows/Placement.h"
#include "WindowServer/X11/Windows/Sentinel.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;
class Overlay;
class SelectionWatch;
class Stacking;

/// An override-redirect window without a frame: no window manager moves or decorates it.
class X11Surface : public Surface {
public:
    X11Surface(Connection& connection, const Displays& displays, const SelectionWatch& compositor,
               Stacking& stacking, int number, std::function<void()> onChanged,
               std::function<void(const Surface&)> onGone);
    ~X11Surface() override;

    xcb_window_t window() const { return m_window; }
    xcb_window_t sentinel() const { return m_sentinel->window(); }
    bool owns(xcb_window_t window) const { return window == m_window || window == sentinel(); }
    /// Whether it is this window that shows the cover's picture.
    bool shows(xcb_window_t window) const;
    const PixelRect& pixels() const { return m_pixels; }
    Backdrop* backdrop() const { return m_backdrop.get(); }

    /// Whether it is to stand on the screen, where there is a display for it.
    bool isWanted() const { return wantsToShow() && m_pixels.width > 0; }
    bool isMapped() const { return m_mapped; }
    bool isLive() const { return m_live; }

    /// Whether a commit has anything to do here.
    bool isStale() const { return m_stale; }
    void changed() override;

    /// Puts the frame onto the displays as they are now.
    void place();
    /// Makes the picture to show anew, with its source still to be filled where the blur is live.
    void prepare(bool resting);
    /// Develops the picture where the source has been filled, else does without.
    void sourceAnswered(bool filled);
    /// Blurs a source that changed, and paints what came to differ.
    void refresh();
    /// Paints what the windows above it have changed in these areas, in root pixels.
    void paintAbove(const std::vector<PixelRect>& areas);

    /// Puts the window and its whole picture on the screen, in a pane of the overlay where there is
    /// one.
    void show(const Overlay* overlay);
    /// Covers with a plain dark colour: the answer to everything that goes wrong.
    void showPlain();
    /// Takes it from the screen. Under a compositor it stays shown in a place that nobody sees:
    /// some let windows that appear fade in.
    void hide();
    void dropPane() { m_pane.reset(); }
    void expose(const xcb_expose_event_t& event);

    /// Undoes what the event tells that another program did to the window. True where that takes
    /// another window.
    bool mend(const xcb_generic_event_t& event);
    /// Another window in the place of the one that was taken away.
    void makeAnew();
    /// Shows in it at once what the former one showed.
    void showAgain();

private:
    void create();
    void writeNames();
    void stack();
    void unstack();
    void prepareStill(double deviation);
    uint32_t groundPixel() const;
    void map();
    void restoreOpacity(const xcb_property_notify_event_t& event);
    void showInPane(const Overlay& overlay);
    void showInWindow();
    void paintAll();
    void paint(const PixelRect& area);
    void paintPicture(const Canvas& canvas, const PixelRect& area) const;
    void markForCompositors();

    Connection& m_connection;
    const Displays& m_displays;
    const SelectionWatch& m_compositor;
    Stacking& m_stacking;
    std::optional<Sentinel> m_sentinel;
    xcb_window_t m_window;
    std::optional<WindowCanvas> m_canvas;
    std::unique_ptr<Pane> m_pane;
    /// Its title, and its class with the name of the output that it covers, as the server has them.
    std::pair<std::string, std::string> m_names;
    PixelRect m_pixels;
    double m_scale = 1;
    bool m_mapped = false; ///< Stands on the screen, before everybody's eyes.
    bool m_parked = false; ///< Stands where nobody sees it.
    bool m_stale = false;
    bool m_live = false;
    // The requests that last mapped and painted it all: what was heard before them is dealt with.
    uint32_t m_mappedAt = 0;
    uint32_t m_paintedAt = 0;
    std::unique_ptr<Backdrop> m_backdrop;
    std::unique_ptr<Backdrop> m_still; ///< What a resting window shows again afterwards.
};

} // namespace WindowServer
