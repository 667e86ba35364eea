#pragma once

#include "WindowServer/X11/Windows/HeldWindow.h"

namespace WindowServer {

class Connection;
class DisplayList;
class SelectionWatch;
class Stacking;

/// The toolkit's windows that are held. What other programs change about them is undone here: the
/// toolkit would accept it, or react late.
class ToolkitGuard : public ToolkitWindows {
public:
    ToolkitGuard(Connection& connection, const DisplayList& displays,
                 const SelectionWatch& compositor, Stacking& stacking)
        : m_connection(connection), m_displays(displays), m_compositor(compositor),
          m_stacking(stacking) {}

    std::shared_ptr<ToolkitWindow> hold(WindowId window) override;
    bool hasManager() const override;
    bool areComposited() const override;

    /// Called where `watch` is to be called at the turn's end.
    std::function<void()> onChanged;

    /// Listens to the windows that have come since the last call. To be called at a turn's end,
    /// when the toolkit has made them.
    void watch();
    /// Puts all windows onto the displays as they are now.
    void placeAgain() const;
    void handle(const xcb_generic_event_t& event);

    // What the windows ask of it.
    Connection& connection() const { return m_connection; }
    const DisplayList& displays() const { return m_displays; }
    Stacking& stacking() const { return m_stacking; }
    /// Null where the window is not held.
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
