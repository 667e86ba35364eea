#include "WindowServer/X11/Windows/ToolkitGuard.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Desktop/SelectionWatch.h"
#include "WindowServer/X11/Event.h"
#include "WindowServer/X11/Windows/Stacking.h"

#include <algorithm>

namespace WindowServer {

std::shared_ptr<ToolkitWindow> ToolkitGuard::hold(WindowId window) {
    HeldWindow*& known = m_windows[static_cast<xcb_window_t>(window)];
    if (known) return known->shared_from_this();
    const auto made = std::make_shared<HeldWindow>(*this, window);
    known = made.get();
    return made;
}

void ToolkitGuard::forget(xcb_window_t window) {
    m_windows.erase(window);
    m_stacking.remove(window);
}

std::shared_ptr<HeldWindow> ToolkitGuard::find(xcb_window_t window) const {
    const auto found = m_windows.find(window);
    return found == m_windows.end() ? nullptr : found->second->shared_from_this();
}

bool ToolkitGuard::areComposited() const { return m_compositor.isOwned(); }

bool ToolkitGuard::hasManager() const {
    const auto check =
        m_connection.numbers(m_connection.root(), m_connection.atom("_NET_SUPPORTING_WM_CHECK"), 1);
    // A manager that has died may have left its name behind, but not its window.
    return !check.empty() &&
           m_connection.reply(xcb_get_window_attributes_reply,
                              xcb_get_window_attributes(m_connection.xcb(), check.front()));
}

xcb_window_t ToolkitGuard::keyboardOwner() const {
    const auto focus =
        m_connection.reply(xcb_get_input_focus_reply, xcb_get_input_focus(m_connection.xcb()));
    return focus ? focus->focus : xcb_window_t{XCB_NONE};
}

void ToolkitGuard::watch() {
    const auto isNew = [](const auto& entry) { return entry.second->isNew(); };
    if (std::ranges::none_of(m_windows, isNew)) return;
    settleToolkit();
    for (const auto& [window, held] : m_windows)
        if (held->isNew()) held->watch();
}

void ToolkitGuard::placeAgain() const {
    for (const auto& [window, held] : m_windows)
        held->restorePlace();
}

void ToolkitGuard::handle(const xcb_generic_event_t& event) {
    const bool isShape =
        m_connection.hasShape() && typeOf(event) == m_connection.events().shape + XCB_SHAPE_NOTIFY;
    const auto held =
        find(isShape ? as<xcb_shape_notify_event_t>(event).affected_window : subjectOf(event));
    if (held) held->handle(event);
}

} // namespace WindowServer
