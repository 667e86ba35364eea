#include "WindowServer/X11/TrayWatch.h"

#include "WindowServer/X11/Connection.h"

#include <xcb/xfixes.h>

namespace WindowServer {

TrayWatch::TrayWatch(Connection& connection) {
    const auto* xfixes = xcb_get_extension_data(connection.xcb(), &xcb_xfixes_id);
    if (!xfixes || !xfixes->present) return;
    m_selectionNotify = static_cast<uint8_t>(xfixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    const auto name = "_NET_SYSTEM_TRAY_S" + std::to_string(connection.screenNumber());
    const xcb_atom_t selection = connection.atom(name.c_str());
    xcb_xfixes_select_selection_input(connection.xcb(), connection.root(), selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const auto owner = connection.reply(xcb_get_selection_owner_reply,
                                        xcb_get_selection_owner(connection.xcb(), selection));
    m_isPresent = owner && owner->owner != XCB_WINDOW_NONE;
}

void TrayWatch::handle(const xcb_generic_event_t& event) {
    if (m_selectionNotify == 0 || (event.response_type & 0x7f) != m_selectionNotify) return;
    m_isPresent = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event).owner !=
                  XCB_WINDOW_NONE;
    if (onChanged) onChanged();
}

} // namespace WindowServer
