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

/// An override-redirect window without a frame: no window manager moves or decorates it. It keeps
/// what it is told and reaches the screen when the session commits.
class X11Surface : public Surface {
public:
    X11Surface(Connection& connection, const Displays& displays);
    ~X11Surface() override;

    int number() const override { return static_cast<int>(m_window); }
    void setTitle(const std::string& title) override;
    void setIdentifier(const std::string& identifier) override { m_identifier = identifier; }
    void setFrame(const CGRect& frame) override;
    void setLevel(int level) override { set(m_level, level); }
    void setIgnoresMouseEvents(bool ignores) override;
    void setAlpha(double alpha) override { set(m_alpha, alpha); }
    void setLook(const Look& look) override { set(m_look, look); }
    void orderFront() override { set(m_ordered, true); }
    void orderOut() override { set(m_ordered, false); }

    void setRadius(int radius) { set(m_radius, radius); }

    /// Called where a commit has something to do here.
    std::function<void()> onChanged;
    /// Called at the end of its life.
    std::function<void(X11Surface&)> onGone;

    xcb_window_t window() const { return m_window; }
    xcb_window_t sentinel() const { return m_sentinel->window(); }
    bool owns(xcb_window_t window) const { return window == m_window || window == sentinel(); }
    /// Whether it is this window that shows the cover's picture.
    bool shows(xcb_window_t window) const;
    const PixelRect& pixels() const { return m_pixels; }
    int level() const { return m_level; }
    Backdrop* backdrop() const { return m_backdrop.get(); }

    bool wantsToShow() const { return m_ordered && m_alpha > 0 && m_pixels.width > 0; }
    bool wantsLiveBlur() const;
    bool isMapped() const { return m_mapped; }
    bool isLive() const { return m_live; }

    /// Whether a commit has anything to do here.
    bool isStale() const { return m_stale; }

    void restingChanged() {
        if (wantsToShow()) changed();
    }
    /// Puts the frame onto the displays as they are now.
    void place();
    /// Makes the picture to show anew, with its source still to be filled where the blur is live.
    void prepare(bool resting);
    /// Whether `prepare` left a live source to be filled.
    bool awaitsSource() const { return m_awaitsSource; }
    void sourceArrived();
    /// Blurs a source that changed, and paints what came to differ.
    void refresh();
    /// Paints what the windows above it have changed in these areas, in root pixels.
    void paintAbove(const std::vector<PixelRect>& areas);

    /// Puts the window and its whole picture on the screen, in a pane of the overlay where there is
    /// one.
    void show(const Overlay* overlay, bool composited);
    /// Covers with a plain dark colour: the answer to everything that goes wrong.
    void showPlain(bool composited);
    /// Takes it from the screen. Under a compositor it stays shown in a place that nobody sees:
    /// some let windows that appear fade in.
    void hide(bool composited);
    void dropPane() { m_pane.reset(); }
    void expose(const xcb_expose_event_t& event);

    /// Undoes what the event tells that another program did to the window. True where that takes
    /// another window.
    bool mend(const xcb_generic_event_t& event, bool composited);
    /// Another window in the place of the one that was taken away.
    void makeAnew();
    /// Shows in it at once what the former one showed.
    void showAgain(bool composited);

private:
    void create();
    void writeNames();
    void changed();
    template <class Value> void set(Value& member, const Value& value) {
        if (std::exchange(member, value) != value) changed();
    }
    void prepareStill(double deviation);
    uint32_t plainPixel() const;
    void map(bool composited);
    void restoreOpacity(const xcb_property_notify_event_t& event);
    void showInPane(const Overlay& overlay);
    void showInWindow(bool composited);
    void paintAll();
    void paint(const PixelRect& area);
    void paintPicture(const Canvas& canvas, const PixelRect& area) const;
    void markForCompositors();

    Connection& m_connection;
    const Displays& m_displays;
    std::optional<Sentinel> m_sentinel;
    xcb_window_t m_window;
    std::optional<WindowCanvas> m_canvas;
    std::unique_ptr<Pane> m_pane;
    std::string m_title;
    std::string m_identifier;
    std::string m_name; ///< Of the output it covers; empty where it covers none.
    CGRect m_frame;
    PixelRect m_pixels;
    double m_scale = 1;
    int m_level = 0;
    double m_alpha = 1;
    int m_radius = 0;
    Shapes m_shapes;
    Look m_look;
    bool m_ordered = false;
    bool m_mapped = false; ///< Stands on the screen, before everybody's eyes.
    bool m_parked = false; ///< Stands where nobody sees it.
    bool m_stale = false;
    bool m_live = false;
    bool m_awaitsSource = false;
    bool m_resting = false;
    // The requests that last mapped and painted it all: what was heard before them is dealt with.
    uint32_t m_mappedAt = 0;
    uint32_t m_paintedAt = 0;
    std::unique_ptr<Backdrop> m_backdrop;
    std::unique_ptr<Backdrop> m_still; ///< What a resting window shows again afterwards.
};

} // namespace WindowServer
