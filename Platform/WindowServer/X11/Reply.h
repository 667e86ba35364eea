#pragma once

#include <cstdlib>
#include <memory>

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

/// Waits until the server has carried a checked request out. False where it refused.
inline bool succeeded(xcb_connection_t* connection, xcb_void_cookie_t checkedRequest) {
    return !Owned<xcb_generic_error_t>(xcb_request_check(connection, checkedRequest));
}

} // namespace WindowServer
