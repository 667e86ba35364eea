#pragma once

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace Harness {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <class T> using Received = std::unique_ptr<T, Free>;

/// One connection to an X server, and the errands that every client has there.
class XClient {
public:
    explicit XClient(const std::string& display)
        : m_connection(xcb_connect(display.c_str(), nullptr)) {
        checkAlive();
        m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    }
    ~XClient() { xcb_disconnect(m_connection); }
    XClient(const XClient&) = delete;
    XClient& operator=(const XClient&) = delete;

    operator xcb_connection_t*() const { return m_connection; }
    const xcb_screen_t& screen() const { return *m_screen; }
    xcb_window_t root() const { return m_screen->root; }
    xcb_atom_t atom(const std::string& name) const {
        const auto length = static_cast<uint16_t>(name.size());
        return ask(xcb_intern_atom_reply, xcb_intern_atom(m_connection, 0, length, name.c_str()))
            ->atom;
    }
    std::string nameOf(xcb_atom_t atom) const {
        const auto name = ask(xcb_get_atom_name_reply, xcb_get_atom_name(m_connection, atom));
        return {xcb_get_atom_name_name(name.get()),
                static_cast<size_t>(xcb_get_atom_name_name_length(name.get()))};
    }

    /// Waits until the server has carried out all that was sent so far.
    void settle() const { ask(xcb_get_input_focus_reply, xcb_get_input_focus(m_connection)); }

    /// The next event that has already arrived; null if none has.
    Received<xcb_generic_event_t> nextEvent() const {
        return Received<xcb_generic_event_t>(xcb_poll_for_event(m_connection));
    }

    /// A message to a window, about itself or about another one.
    void send(xcb_window_t window, xcb_atom_t type, uint32_t mask, const uint32_t (&data)[5],
              xcb_window_t about = XCB_WINDOW_NONE) const {
        xcb_client_message_event_t message = {};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = about ? about : window;
        message.type = type;
        std::copy(std::begin(data), std::end(data), message.data.data32);
        xcb_send_event(m_connection, 0, window, mask, reinterpret_cast<const char*>(&message));
        xcb_flush(m_connection);
    }

    /// Writes numbers, of 32 bits each, into a property.
    void put(xcb_window_t window, const std::string& property, xcb_atom_t type,
             const std::vector<uint32_t>& numbers) const {
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
                            static_cast<uint32_t>(numbers.size()), numbers.data());
        settle();
    }
    /// Takes a selection and lets everyone know.
    void own(const std::string& selection, xcb_window_t window) const {
        xcb_set_selection_owner(m_connection, window, atom(selection), XCB_CURRENT_TIME);
        settle();
        send(root(), atom("MANAGER"), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
             {XCB_CURRENT_TIME, atom(selection), window, 0, 0});
    }
    /// As a window manager's close button does.
    void askToClose(xcb_window_t window) const {
        send(window, atom("WM_PROTOCOLS"), XCB_EVENT_MASK_NO_EVENT,
             {atom("WM_DELETE_WINDOW"), XCB_CURRENT_TIME, 0, 0, 0});
    }

    /// The reply to a request; null if the server refused it. Throws if the server is gone.
    template <class Reply, class Cookie>
    Received<Reply> ask(Reply* (*reply)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                        Cookie cookie) const {
        Received<Reply> result(reply(m_connection, cookie, nullptr));
        checkAlive();
        return result;
    }

private:
    void checkAlive() const {
        if (xcb_connection_has_error(m_connection)) throw std::runtime_error("no X server");
    }

    xcb_connection_t* m_connection = nullptr;
    xcb_screen_t* m_screen = nullptr;
};

} // namespace Harness
