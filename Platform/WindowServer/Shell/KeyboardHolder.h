#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Brings the keyboard of a Wayland session to the X server, where it comes only with a window that
/// is managed. That is a window of one pixel, which stands there as long as it is wanted and leaves
/// the keyboard to whoever had it before.
class KeyboardHolder {
public:
    explicit KeyboardHolder(Connection& connection) : m_connection(connection) {}

    /// Wants the keyboard there as long as the result lives. Calls back once it has come.
    std::shared_ptr<void> hold(std::function<void()> hasCome);

    void handle(const xcb_generic_event_t& event);

private:
    void make();
    void leave();

    Connection& m_connection;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    std::weak_ptr<void> m_holders;
    std::vector<std::function<void()>> m_waiting;
};

} // namespace WindowServer
