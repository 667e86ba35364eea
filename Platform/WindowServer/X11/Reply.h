#pragma once

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace WindowServer {

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

template <typename T> using Owned = std::unique_ptr<T, FreeDeleter>;

/// Waits for a reply. Null where the server answered with an error, as it does when a window of
/// another program is gone.
template <typename Reply, typename Cookie>
Owned<Reply> await(xcb_connection_t* connection,
                   Reply* (*fetch)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                   Cookie cookie) {
    xcb_generic_error_t* error = nullptr;
    Owned<Reply> reply(fetch(connection, cookie, &error));
    std::free(error);
    return reply;
}

/// The numbers of a property of 32 bits; none where it is not there, or is of another kind.
inline std::vector<uint32_t> numbersOf(const Owned<xcb_get_property_reply_t>& reply) {
    if (!reply || reply->format != 32) return {};
    const auto* const numbers = static_cast<uint32_t*>(xcb_get_property_value(reply.get()));
    return {numbers, numbers + reply->value_len};
}

inline void setNumbers(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
                       xcb_atom_t type, const std::vector<uint32_t>& numbers) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<uint32_t>(numbers.size()), numbers.data());
}

inline void setText(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
                    xcb_atom_t type, const std::string& text) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<uint32_t>(text.size()), text.data());
}

/// Waits until the server has carried a checked request out. False where it refused.
inline bool succeeded(xcb_connection_t* connection, xcb_void_cookie_t checkedRequest) {
    return !Owned<xcb_generic_error_t>(xcb_request_check(connection, checkedRequest));
}

} // namespace WindowServer
