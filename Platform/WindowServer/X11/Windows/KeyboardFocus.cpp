#include "WindowServer/X11/Windows/KeyboardFocus.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Windows/ToolkitWindows.h"

namespace WindowServer {

void KeyboardFocus::take(xcb_window_t window) {
    const xcb_window_t former = owner();
    if (former == window) return;
    if (!m_lent.contains(window) || !m_lent.contains(former)) m_lent[window] = former;
    focusToolkit(window);
}

void KeyboardFocus::giveBack(xcb_window_t window) {
    const auto lent = m_lent.extract(window);
    if (!lent || owner() != window) return;
    xcb_connection_t* const xcb = m_connection.xcb();
    const xcb_window_t former = lent.mapped();
    const auto attributes =
        m_connection.reply(xcb_get_window_attributes_reply, xcb_get_window_attributes(xcb, former));
    const bool stands = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    xcb_set_input_focus(xcb, XCB_INPUT_FOCUS_PARENT,
                        stands ? former : xcb_window_t{XCB_INPUT_FOCUS_POINTER_ROOT},
                        XCB_CURRENT_TIME);
    owner(); // The server has done it before the window goes.
}

xcb_window_t KeyboardFocus::owner() const {
    const auto focus =
        m_connection.reply(xcb_get_input_focus_reply, xcb_get_input_focus(m_connection.xcb()));
    return focus ? focus->focus : xcb_window_t{XCB_NONE};
}

} // namespace WindowServer
