#pragma once

#include "Harness/Area.h"
#include "Harness/XClient.h"

#include <memory>
#include <vector>

#include <xcb/xcb_renderutil.h>

namespace Benchmarks {

/// What no cover of a monitor can leave out, asked of the server with nothing besides. All that it
/// takes is given back with it. Parts are in pixels of the monitor, multiples of the factor.
class BareCover {
public:
    BareCover(const Harness::XClient& client, const Harness::Area& monitor);
    ~BareCover();
    BareCover(const BareCover&) = delete;
    BareCover& operator=(const BareCover&) = delete;

    static constexpr int halvings = 4;
    static constexpr int factor = 1 << halvings;

    xcb_window_t window() const { return m_window; }
    Harness::Area whole() const;

    /// A picture of a window's pixels or the screen's, to be halved.
    xcb_render_picture_t makeSource(xcb_drawable_t drawable) const;

    /// Halves a part four times; (x, y) of the source is where the monitor begins.
    void halve(xcb_render_picture_t source, int x, int y, const Harness::Area& part) const;
    Harness::Received<xcb_get_image_reply_t> read(const Harness::Area& part) const;
    void write(const uint32_t* pixels, const Harness::Area& part) const;
    void enlarge(const Harness::Area& part) const;
    void markLastPixel() const; ///< In a colour that the screen does not have there.

private:
    xcb_render_picture_t makeScratch(int width, int height, double scale, const char* filter);

    const Harness::XClient& m_client;
    Harness::Area m_monitor;
    xcb_render_pictformat_t m_format;
    xcb_window_t m_window;
    xcb_gcontext_t m_context;
    xcb_pixmap_t m_pixmap = XCB_NONE;           ///< Of the scratch picture made last.
    std::vector<xcb_render_picture_t> m_levels; ///< From half the size down to a sixteenth.
    xcb_render_picture_t m_half;
    xcb_render_picture_t m_cover;
};

/// The covers of all monitors, shown and hidden at one stroke.
class BareToggle {
public:
    BareToggle(const Harness::XClient& client, const std::vector<Harness::Area>& monitors);
    ~BareToggle();
    BareToggle(const BareToggle&) = delete;
    BareToggle& operator=(const BareToggle&) = delete;

    const BareCover& cover(size_t monitor) const { return *m_covers.at(monitor); }

    void halve() const;
    void keepPictures() const; ///< Of all other windows.
    void keepPicture(xcb_window_t window) const;
    void paint() const;
    /// Keeps the pictures, and the server from giving their memory back, for this object's life.
    void namePictures(const std::vector<xcb_window_t>& windows);
    void markLastPixels() const;
    void hide() const;

private:
    const Harness::XClient& m_client;
    xcb_render_picture_t m_screen;
    std::vector<Harness::Area> m_monitors;
    std::vector<std::unique_ptr<BareCover>> m_covers;
    std::vector<xcb_pixmap_t> m_pictures;
};

} // namespace Benchmarks
