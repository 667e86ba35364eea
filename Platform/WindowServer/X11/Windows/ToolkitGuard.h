#pragma once

#include "WindowServer/Displays.h"
#include "WindowServer/ToolkitWindows.h"

#include <map>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;
class HeldWindow;
class SelectionWatch;
class Stacking;

/// The toolkit's windows that are held. What other programs change about them is undone here: the
/// toolkit would accept it, or react late.
class ToolkitGuard : public ToolkitWindows {
public:
    ToolkitGuard(Connection& connection, const Displays& displays, const SelectionWatch& compositor,
                 Stacking& stacking)
        : m_connection(connection), m_displays(displays), m_compositor(compositor),
          m_stacking(stacking) {}

    std::shared_ptr<ToolkitWindow> hold(WindowId window) override;
    bool hasManager() const override;
    bool areComposited() const override;

    /// Called where one has come that is to be stacked, or has gone.
    std::function<void()> onChanged;

    /// Puts all windows onto the displays as they are now.
    void placeAgain() const;
    void handle(const xcb_generic_event_t& event);

private:
    friend class HeldWindow;

    /// Null where the window is not held.
    std::shared_ptr<HeldWindow> find(xcb_window_t window) const;
    xcb_window_t keyboardOwner() const;

    Connection& m_connection;
    const Displays& m_displays;
    const SelectionWatch& m_compositor;
    Stacking& m_stacking;
    std::map<xcb_window_t, std::weak_ptr<HeldWindow>> m_windows;
};

/// Waits until the server has the windows that the toolkit has made so far.
void settleToolkit();

/// The drawable's pixels at `from`, with `area` as their place. Empty where the server refuses or
/// its pixels are not of 24 bits.
Snapshot takeSnapshot(xcb_connection_t* connection, xcb_drawable_t drawable, const PixelRect& from,
                      const PixelRect& area);

} // namespace WindowServer
