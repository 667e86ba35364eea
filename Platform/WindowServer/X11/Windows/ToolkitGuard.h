#pragma once

#include "WindowServer/X11/Windows/HeldWindow.h"

namespace WindowServer {

class Connection;
class DisplayList;
class SelectionWatch;
class Stacking;

/// The toolkit's windows that are held. What another program makes of what was set for one is
/// undone: the toolkit would take it for its own doing, or be late with it.
class ToolkitGuard : public ToolkitWindows {
public:
    ToolkitGuard(Connection& connection, const DisplayList& displays,
                 const SelectionWatch& compositor, Stacking& stacking)
        : m_connection(connection), m_displays(displays), m_compositor(compositor),
          m_stacking(stacking) {}

    std::shared_ptr<ToolkitWindow> hold(WindowId window) override;
    bool hasManager() const override;
    bool areComposited() const override;

    /// Called where a turn's end has something to do here.
    std::function<void()> onChanged;

    /// Listens to the windows that have come since the last call. To be called at a turn's end:
    /// the toolkit has to make them first, and to show them in its own time.
    void watch();
    /// The same frames may be other pixels now.
    void placeAgain() const;
    void handle(const xcb_generic_event_t& event);

    // For the windows themselves.
    Connection& connection() const { return m_connection; }
    const DisplayList& displays() const { return m_displays; }
    Stacking& stacking() const { return m_stacking; }
    /// Null where that one is not held.
    std::shared_ptr<HeldWindow> find(xcb_window_t window) const;
    xcb_window_t keyboardOwner() const;
    void forget(xcb_window_t window);

private:
    Connection& m_connection;
    const DisplayList& m_displays;
    const SelectionWatch& m_compositor;
    Stacking& m_stacking;
    std::map<xcb_window_t, HeldWindow*> m_windows;
};

} // namespace WindowServer
