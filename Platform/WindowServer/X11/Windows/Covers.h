#pragma once

#include "WindowServer/Displays.h"
#include "WindowServer/Surfaces.h"
#include "WindowServer/X11/Blur/LiveBlur.h"
#include "WindowServer/X11/Windows/Overlay.h"

#include <QElapsedTimer>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

#include <xcb/xcb.h>

namespace WindowServer {

class SelectionWatch;
class Connection;
class Stacking;
class X11Surface;

/// Carries out at the end of each turn of the event loop what the surfaces were told in it, and
/// keeps their blur current and other programs' hands off them.
class Covers : public Surfaces {
public:
    Covers(Connection& connection, const Displays& displays, const SelectionWatch& compositor,
           Stacking& stacking);
    ~Covers() override;

    std::unique_ptr<Surface> makeSurface() override;
    int setBackgroundBlurRadius(int surfaceNumber, int radius) override;
    void setResting(bool rests) override;

    void scheduleCommit();

    void compositorChanged();
    void handle(const xcb_generic_event_t& event);

    /// Plain and dark, until they are shown anew.
    void coverPlainly();
    /// Returns when the server has cleared the screen.
    void leaveScreen();

private:
    std::unique_ptr<X11Surface> newSurface();
    void keepSpare();
    void commit();
    bool wantToShow() const;
    void prepare(const std::vector<X11Surface*>& surfaces);
    void followDesktop();
    void showAll(const std::vector<X11Surface*>& surfaces);
    void replace(X11Surface& surface);

    bool wantsOverlay() const;
    void holdOverlay();
    void dropOverlay();

    void scheduleFrame();
    void drawFrame();
    void drawAbove();
    void paint(const std::function<void()>& paintCovers);

    bool own(xcb_window_t window) const;

    Connection& m_connection;
    const Displays& m_displays;
    const SelectionWatch& m_compositor;
    Stacking& m_stacking;
    std::vector<X11Surface*> m_surfaces;
    std::unique_ptr<X11Surface> m_spare; ///< Has no frame, so it is never shown.
    std::unique_ptr<LiveBlur> m_live;
    /// Only while covered, and where a compositor leaves it be.
    std::unique_ptr<Overlay> m_overlay;
    bool m_overlayLost = false;
    xcb_window_t m_overpainter = XCB_WINDOW_NONE; ///< A compositor that draws over the overlay.
    bool m_covered = false;                       ///< As it was told last.
    int m_lastNumber = 0;
    bool m_resting = false;
    bool m_commitIsDue = false;
    QTimer m_frame;
    QTimer m_above; ///< What stands above the covers waits for no frame.
    QTimer m_afterCompositor;
    QElapsedTimer m_sinceFrame;
};

} // namespace WindowServer
