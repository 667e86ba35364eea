#pragma once

#include <cstdlib>
#include <memory>
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
    explicit XClient(const std::string& display);
    ~XClient();
    XClient(const XClient&) = delete;
    XClient& operator=(const XClient&) = delete;

    operator xcb_connection_t*() const { return m_connection; }
    const xcb_screen_t& screen() const { return *m_screen; }
    xcb_window_t root() const { return m_screen->root; }
    xcb_atom_t atom(const std::string& name) const;
    std::string nameOf(xcb_atom_t atom) const;

    /// Waits until the server has carried out all that was sent so far.
    void settle() const;

    /// The next event that has already arrived; null if none has.
    Received<xcb_generic_event_t> nextEvent() const;

    /// A message to a window, about itself or about another one.
    void send(xcb_window_t window, xcb_atom_t type, uint32_t mask, const uint32_t (&data)[5],
              xcb_window_t about = XCB_WINDOW_NONE) const;

    /// Writes numbers, of 32 bits each, into a property.
    void put(xcb_window_t window, const std::string& property, xcb_atom_t type,
             const std::vector<uint32_t>& numbers) const;
    /// Takes a selection and lets everyone know.
    void own(const std::string& selection, xcb_window_t window) const;
    void askToClose(xcb_window_t window) const; ///< As a window manager's close button does.

    /// The reply to a request; null if the server refused it. Throws if the server is gone.
    template <class Reply, class Cookie>
    Received<Reply> ask(Reply* (*reply)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                        Cookie cookie) const {
        Received<Reply> result(reply(m_connection, cookie, nullptr));
        checkAlive();
        return result;
    }

private:
    void checkAlive() const;

    xcb_connection_t* m_connection = nullptr;
    xcb_screen_t* m_screen = nullptr;
};

} // namespace Harness
