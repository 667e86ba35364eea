#include "WindowServer/X11/Desktop/Xwayland.h"

#include "WindowServer/X11/Connection.h"

#include <string_view>

#include <xcb/randr.h>

namespace WindowServer {

namespace {

/// New ones say so by an extension that is there for nothing else.
bool saysSo(const Connection& connection) {
    constexpr std::string_view name = "XWAYLAND";
    const auto reply = connection.reply(
        xcb_query_extension_reply, xcb_query_extension(connection.xcb(), name.size(), name.data()));
    return reply && reply->present;
}

/// Older ones are known by what they call their monitors.
bool namesMonitorsSo(const Connection& connection) {
    if (!connection.events().randr) return false;
    const auto reply =
        connection.reply(xcb_randr_get_monitors_reply,
                         xcb_randr_get_monitors(connection.xcb(), connection.root(), true));
    if (!reply) return false;
    auto it = xcb_randr_get_monitors_monitors_iterator(reply.get());
    for (; it.rem; xcb_randr_monitor_info_next(&it)) {
        const auto name = connection.reply(xcb_get_atom_name_reply,
                                           xcb_get_atom_name(connection.xcb(), it.data->name));
        if (name && std::string_view(xcb_get_atom_name_name(name.get()),
                                     xcb_get_atom_name_name_length(name.get()))
                        .starts_with("XWAYLAND"))
            return true;
    }
    return false;
}

} // namespace

bool isXwayland(const Connection& connection) {
    return saysSo(connection) || namesMonitorsSo(connection);
}

} // namespace WindowServer
