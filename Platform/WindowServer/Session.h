// The connection to the window server, one interface for each subject. AppKit speaks to the screen
// through these alone; the X11 and Wayland folders implement them on servers of either kind.
#pragma once

#include "WindowServer/Desktop.h"
#include "WindowServer/Displays.h"
#include "WindowServer/GlobalKey.h"
#include "WindowServer/Surfaces.h"
#include "WindowServer/ToolkitWindows.h"

#include <memory>

namespace WindowServer {

class Session {
public:
    virtual ~Session() = default;

    /// Opens the session on the Wayland compositor, where there is one whose screens can be
    /// covered, else on the X server that DISPLAY names, and has the toolkit use the same, before
    /// the application object exists. False where no server answers. One that was installed before
    /// is kept.
    static bool open();

    /// The open session.
    static Session& current();
    static void install(std::unique_ptr<Session> session);

    /// Joins the running application's event loop. Called once, when the application object exists.
    virtual void attach() = 0;

    virtual Displays& displays() = 0;
    virtual Surfaces& surfaces() = 0;
    virtual ToolkitWindows& windows() = 0;
    virtual GlobalKey& key() = 0;
    virtual Settings& settings() = 0;
    virtual Tray& tray() = 0;
};

} // namespace WindowServer
