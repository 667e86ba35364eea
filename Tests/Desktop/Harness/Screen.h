#pragma once

#include "Harness/Picture.h"
#include "Harness/XClient.h"

#include <map>

#include <sys/types.h>

namespace Harness {

/// A child of the root window.
struct ScreenWindow {
    xcb_window_t number = 0;
    Area area;
    bool viewable = false;
    bool overrideRedirect = false;
    std::string instance; ///< Both halves of WM_CLASS.
    std::string className;
};

/// What anyone at the server can see.
class Screen {
public:
    explicit Screen(const std::string& display) : m_client(display) {}

    Area bounds() const { return areaOf(m_client.root()); }
    Picture grab(const Area& area) const;
    /// The same with every floating button of the program painted over by what stands left of it.
    Picture grabWithoutButtons(const Area& area) const;

    std::vector<Area> monitors() const;
    std::vector<ScreenWindow> windows() const; ///< From the bottom to the top.
    bool isViewable(xcb_window_t window) const { return describe(window).viewable; }
    std::string textOf(xcb_window_t window, const std::string& property) const;

    /// How many rectangles a window's input region has: one, the whole window, unless it was set.
    size_t inputRectangles(xcb_window_t window) const;

    /// Without the frame of a window manager. Empty where there is no such window.
    Area areaOf(xcb_window_t window) const;
    Area frameAround(xcb_window_t window) const; ///< The child of the root that it stands in.

    xcb_window_t focus() const;
    xcb_window_t windowAtPointer() const; ///< Of those of the root.
    xcb_window_t selectionOwner(const std::string& selection) const;

    /// How many of each kind of thing all connections of one process hold.
    std::map<std::string, size_t> holdingsOf(pid_t process) const;

private:
    ScreenWindow describe(xcb_window_t window) const;

    XClient m_client;
};

} // namespace Harness
