#pragma once

#include "WindowServer/Session.h"
#include "WindowServer/X11/Blur/LiveBlur.h"
#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Desktop/CompositorWatch.h"
#include "WindowServer/X11/Desktop/KeyGrab.h"
#include "WindowServer/X11/Desktop/Monitors.h"
#include "WindowServer/X11/Desktop/Struts.h"
#include "WindowServer/X11/Desktop/TrayDock.h"
#include "WindowServer/X11/Desktop/TrayWatch.h"
#include "WindowServer/X11/Desktop/XSettings.h"
#include "WindowServer/X11/Windows/KeyboardFocus.h"
#include "WindowServer/X11/Windows/Overlay.h"
#include "WindowServer/X11/Windows/Stacking.h"
#include "WindowServer/X11/Windows/ToolkitGuard.h"

#include <QElapsedTimer>
#include <QTimer>

#include <memory>
#include <vector>

namespace WindowServer {

class X11Surface;

/// The session on an X server: carries out at the end of each turn of the event loop what the
/// surfaces were told in it, and keeps their blur, order and displays current.
class X11Session : public Session {
public:
    /// Null where no server answers.
    static std::unique_ptr<X11Session> connect();
    ~X11Session() override;

    void attach() override;
    const std::vector<Display>& displays() const override { return m_displays; }
    bool hasTray() const override { return m_tray.isPresent(); }
    TrayLook trayLook() const override { return lookOfTray(*m_connection, m_tray.owner()); }
    void dock(ToolkitWindow window, const std::function<void()>& docked) override {
        m_tray.dock(window, docked);
    }
    Snapshot groundOfDocked(ToolkitWindow window) override {
        return WindowServer::groundOfDocked(*m_connection, window);
    }
    bool isComposited() const override { return m_compositor.isPresent(); }
    bool canBeCovered() const override { return !m_connection->isXwayland(); }
    std::string themeName() const override { return m_settings.themeName(); }
    int windowScale() const override { return m_settings.windowScale(); }
    bool grabKey(const KeyChord& chord) override { return m_key.take(chord); }
    std::unique_ptr<Surface> makeSurface() override;
    void setResting(bool rests) override;
    void setLevel(ToolkitWindow window, int level) override;
    void dropLevel(ToolkitWindow window) override;
    bool hasWindowManager() const override;
    void takeKeyboard(ToolkitWindow window) override;
    void giveKeyboardBack(ToolkitWindow window) override;
    void setName(ToolkitWindow window, const std::string& instance) override;
    bool place(ToolkitWindow window, const CGRect& frame) override;
    void setShape(ToolkitWindow window, Region region,
                  const std::vector<PixelRect>& rectangles) override;
    void setShadowMargin(ToolkitWindow window, int margin) override;
    Snapshot grabAround(ToolkitWindow window, int margin) override;
    int setBackgroundBlurRadius(int surfaceNumber, int radius) override;

    bool canBlurLive() const { return m_connection->canBlurLive(); }
    bool isResting() const { return m_resting; }
    /// The display that a frame belongs to: the one of that very frame, else the one that holds the
    /// frame's middle. Null where there is none.
    const Display* displayAt(const CGRect& frame) const;
    void scheduleCommit() { m_commit.start(0); }
    void remember(X11Surface& surface) { m_surfaces.push_back(&surface); }
    void forget(X11Surface& surface);
    /// Keeps a live blur's cover out of the redirection, before it is mapped.
    void exempt(const X11Surface& surface);
    /// Puts a surface that has just been mapped into its place in the order.
    void raise(const X11Surface& surface);

private:
    explicit X11Session(std::unique_ptr<Connection> connection);

    void handle(const xcb_generic_event_t& event);
    void handleOwnWindow(int type, const xcb_generic_event_t& event);
    void handleToolkitWindow(int type, const xcb_generic_event_t& event);
    std::vector<Display> readDisplays();
    void refreshDisplays();
    void watchDisplays();
    void stack(const X11Surface& surface);
    void unstack(const X11Surface& surface);
    void leaveScreen();
    void settle() const;

    void commit();
    void hideUnwanted();
    bool wantsOverlay() const;
    bool ownsCover(xcb_window_t window) const;
    void loseOverlay();
    void holdOverlay();
    void dropOverlay();
    void prepare(const std::vector<X11Surface*>& surfaces);
    void showAll(const std::vector<X11Surface*>& surfaces);
    void captureSources(const std::vector<X11Surface*>& surfaces);
    void followDesktop();
    void watchScreen(bool watch);
    void selectRootEvents();
    void scheduleFrame();
    void drawFrame();
    void drawAbove();
    void paint(const std::function<void()>& paintCovers);
    void coverPlainly();

    std::unique_ptr<Connection> m_connection;
    Monitors m_monitors;
    Stacking m_stacking;
    TrayWatch m_tray;
    CompositorWatch m_compositor;
    Struts m_struts;
    XSettings m_settings;
    KeyGrab m_key;
    KeyboardFocus m_focus;
    ToolkitGuard m_guard;
    std::vector<Display> m_displays;
    std::vector<X11Surface*> m_surfaces;
    std::unique_ptr<LiveBlur> m_live;
    std::unique_ptr<Overlay>
        m_overlay; ///< Only while covered, and where a compositor leaves it be.
    bool m_overlayLost = false;
    xcb_window_t m_overpainter = XCB_WINDOW_NONE; ///< A compositor that draws over the overlay.
    bool m_watching = false;
    bool m_covered = false; ///< As it was told last.
    bool m_resting = false;
    bool m_wasRefused = false; ///< The log has heard of it.
    bool m_orderStale = false; ///< Whether a commit has to restack, whatever else it does.
    QTimer m_commit;
    QTimer m_frame;
    QTimer m_above; ///< What stands above the covers waits for no frame.
    QTimer m_afterCompositor;
    QTimer m_displayRefresh;
    QElapsedTimer m_sinceFrame;
};

} // namespace WindowServer
