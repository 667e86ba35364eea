#pragma once

#include "WindowServer/Session.h"
#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Desktop/DisplayList.h"
#include "WindowServer/X11/Desktop/KeyGrab.h"
#include "WindowServer/X11/Desktop/SelectionWatch.h"
#include "WindowServer/X11/Desktop/TrayDock.h"
#include "WindowServer/X11/Desktop/TrayWatch.h"
#include "WindowServer/X11/Desktop/XSettings.h"
#include "WindowServer/X11/Windows/Covers.h"
#include "WindowServer/X11/Windows/KeyboardFocus.h"
#include "WindowServer/X11/Windows/Stacking.h"
#include "WindowServer/X11/Windows/ToolkitGuard.h"

#include <memory>
#include <vector>

namespace WindowServer {

/// The session on an X server: hands each subject its events, and tells one of another's changes.
class X11Session : public Session {
public:
    /// Null where no server answers.
    static std::unique_ptr<X11Session> connect();

    void attach() override;
    const std::vector<Display>& displays() const override { return m_displays.all(); }
    bool hasTray() const override { return m_tray.isPresent(); }
    TrayLook trayLook() const override { return lookOfTray(*m_connection, m_tray.owner()); }
    void dock(ToolkitWindow window, const std::function<void()>& docked) override {
        m_tray.dock(window, docked);
    }
    Snapshot groundOfDocked(ToolkitWindow window) override {
        return WindowServer::groundOfDocked(*m_connection, window);
    }
    bool isComposited() const override { return m_compositor.isOwned(); }
    bool canBeCovered() const override { return !m_connection->isXwayland(); }
    std::string themeName() const override { return m_settings.themeName(); }
    int windowScale() const override { return m_settings.windowScale(); }
    bool grabKey(const KeyChord& chord) override { return m_key.take(chord); }
    std::unique_ptr<Surface> makeSurface() override { return m_covers.makeSurface(); }
    void setResting(bool rests) override { m_covers.setResting(rests); }
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
    int setBackgroundBlurRadius(int surfaceNumber, int radius) override {
        return m_covers.setBackgroundBlurRadius(surfaceNumber, radius);
    }

private:
    explicit X11Session(std::unique_ptr<Connection> connection);

    void handle(const xcb_generic_event_t& event);
    void tellOfLoss(const xcb_generic_event_t& event);
    void coverPlainly();

    std::unique_ptr<Connection> m_connection;
    DisplayList m_displays;
    SelectionWatch m_compositor;
    TrayWatch m_tray;
    XSettings m_settings;
    KeyGrab m_key;
    KeyboardFocus m_focus;
    Stacking m_stacking;
    ToolkitGuard m_guard;
    Covers m_covers;
    bool m_wasRefused = false; ///< The log has heard of it.
};

} // namespace WindowServer
