#include "WindowServer/X11/Desktop/CompositorWatch.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"

#include <string>
#include <utility>

#include <xcb/xfixes.h>

namespace WindowServer {

CompositorWatch::CompositorWatch(Connection& connection)
    : m_selection(
          connection.atom(("_NET_WM_CM_S" + std::to_string(connection.screenNumber())).c_str())) {
    const auto* xfixes = xcb_get_extension_data(connection.xcb(), &xcb_xfixes_id);
    if (!xfixes || !xfixes->present) return;
    m_selectionNotify = static_cast<uint8_t>(xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    xcb_xfixes_select_selection_input(connection.xcb(), connection.root(), m_selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const auto reply = connection.reply(xcb_get_selection_owner_reply,
                                        xcb_get_selection_owner(connection.xcb(), m_selection));
    if (reply) m_owner = reply->owner;
}

void CompositorWatch::handle(const xcb_generic_event_t& event) {
    if (m_selectionNotify == 0 || typeOf(event) != m_selectionNotify) return;
    const auto& notify = as<xcb_xfixes_selection_notify_event_t>(event);
    if (notify.selection != m_selection) return;
    if (std::exchange(m_owner, notify.owner) != notify.owner && onChanged) onChanged();
}

} // namespace WindowServer
