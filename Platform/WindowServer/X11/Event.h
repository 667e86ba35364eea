#pragma once

#include <cstdint>

#include <xcb/xcb.h>

namespace WindowServer {

/// The event's code, whether the server or another program sent it.
inline int typeOf(const xcb_generic_event_t& event) { return event.response_type & 0x7f; }

/// The event as the type that its code stands for.
template <typename Event> const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

/// Whether it happened before the server carried out the request.
template <typename Event> bool isBefore(const Event& event, uint32_t request) {
    const auto sequence = reinterpret_cast<const xcb_generic_event_t&>(event).full_sequence;
    return static_cast<int32_t>(sequence - request) < 0;
}

/// The window whose place, order or life changed; none for other events. All that tell of such
/// begin alike: with the window that hears of it, and the one that it is about. The requests among
/// their codes come to window managers alone.
inline xcb_window_t subjectOf(const xcb_generic_event_t& event) {
    const int type = typeOf(event);
    const bool tells = type >= XCB_CREATE_NOTIFY && type <= XCB_CIRCULATE_NOTIFY;
    return tells ? as<xcb_map_notify_event_t>(event).window : xcb_window_t{XCB_NONE};
}

} // namespace WindowServer
