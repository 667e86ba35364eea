#include "WindowServer/X11/Desktop/SelectionWatch.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"

#include <xcb/xfixes.h>

namespace WindowServer {

SelectionWatch::SelectionWatch(Connection& connection, const std::string& prefix)
    : m_connection(connection),
      m_selection(connection.atom(prefix + std::to_string(connection.screenNumber()))) {
    xcb_connection_t* const xcb = connection.xcb();
    const auto* xfixes = xcb_get_extension_data(xcb, &xcb_xfixes_id);
    if (xfixes && xfixes->present) {
        m_notify = static_cast<uint8_t>(xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
        xcb_xfixes_select_selection_input(
            xcb, connection.root(), m_selection,
            XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    }
    take(connection.ownerOf(m_selection));
}

void SelectionWatch::take(xcb_window_t owner) {
    m_owner = owner;
    if (isOwned()) listenToPanel(m_connection, owner);
}

void SelectionWatch::handle(const xcb_generic_event_t& event) {
    if (m_notify == 0 || typeOf(event) != m_notify) return;
    const auto& notify = as<xcb_xfixes_selection_notify_event_t>(event);
    if (notify.selection != m_selection || notify.owner == m_owner) return;
    take(notify.owner);
    if (onChanged) onChanged();
}

} // namespace WindowServer
