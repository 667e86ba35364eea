#include "WindowServer/Shell/KeyboardHolder.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Event.h"

#include <utility>

namespace WindowServer {

std::shared_ptr<void> KeyboardHolder::hold(std::function<void()> hasCome) {
    auto holder = m_holders.lock();
    if (!holder) {
        make();
        holder = std::shared_ptr<void>(
            this, [](void* self) { static_cast<KeyboardHolder*>(self)->leave(); });
        m_holders = holder;
    }
    m_waiting.push_back(std::move(hasCome));
    // As from a pager, whose requests are never taken for an intrusion.
    constexpr uint32_t pager = 2;
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = m_window;
    request.type = m_connection.atom("_NET_ACTIVE_WINDOW");
    request.data.data32[0] = pager;
    xcb_send_event(m_connection.xcb(), false, m_connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&request));
    m_connection.flush();
    return holder;
}

void KeyboardHolder::make() {
    m_window = m_connection.newId();
    const uint32_t events = XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_create_window(m_connection.xcb(), XCB_COPY_FROM_PARENT, m_window, m_connection.root(), 0, 0,
                      1, 1, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK, &events);
    const xcb_atom_t kind = m_connection.atom("_NET_WM_WINDOW_TYPE_UTILITY");
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, m_window,
                        m_connection.atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &kind);
    const xcb_atom_t states[] = {m_connection.atom("_NET_WM_STATE_SKIP_TASKBAR"),
                                 m_connection.atom("_NET_WM_STATE_SKIP_PAGER")};
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, m_window,
                        m_connection.atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32, 2, states);
    xcb_map_window(m_connection.xcb(), m_window);
}

void KeyboardHolder::leave() {
    xcb_destroy_window(m_connection.xcb(), std::exchange(m_window, XCB_WINDOW_NONE));
    m_waiting.clear();
    m_connection.flush();
}

void KeyboardHolder::handle(const xcb_generic_event_t& event) {
    if (typeOf(event) != XCB_FOCUS_IN || as<xcb_focus_in_event_t>(event).event != m_window) return;
    for (const auto& tell : std::exchange(m_waiting, {}))
        tell();
}

} // namespace WindowServer
