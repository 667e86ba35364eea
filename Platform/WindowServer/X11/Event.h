#pragma once

#include <xcb/xcb.h>

namespace WindowServer {

/// The event's code, whether the server or another program sent it.
inline int typeOf(const xcb_generic_event_t& event) { return event.response_type & 0x7f; }

/// The event as what its code says that it is.
template <typename Event> const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

} // namespace WindowServer
