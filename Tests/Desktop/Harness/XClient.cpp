#include "Harness/XClient.h"

#include <algorithm>
#include <stdexcept>

namespace Harness {

XClient::XClient(const std::string& display) : m_connection(xcb_connect(display.c_str(), nullptr)) {
    checkAlive();
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
}

XClient::~XClient() { xcb_disconnect(m_connection); }

void XClient::checkAlive() const {
    if (xcb_connection_has_error(m_connection)) throw std::runtime_error("no X server");
}

xcb_atom_t XClient::atom(const std::string& name) const {
    const auto length = static_cast<uint16_t>(name.size());
    return ask(xcb_intern_atom_reply, xcb_intern_atom(m_connection, 0, length, name.c_str()))->atom;
}

std::string XClient::nameOf(xcb_atom_t atom) const {
    const auto name = ask(xcb_get_atom_name_reply, xcb_get_atom_name(m_connection, atom));
    return {xcb_get_atom_name_name(name.get()),
            static_cast<size_t>(xcb_get_atom_name_name_length(name.get()))};
}

void XClient::settle() const { ask(xcb_get_input_focus_reply, xcb_get_input_focus(m_connection)); }

Received<xcb_generic_event_t> XClient::nextEvent() const {
    return Received<xcb_generic_event_t>(xcb_poll_for_event(m_connection));
}

void XClient::send(xcb_window_t window, xcb_atom_t type, uint32_t mask, const uint32_t (&data)[5],
                   xcb_window_t about) const {
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = about ? about : window;
    message.type = type;
    std::copy(std::begin(data), std::end(data), message.data.data32);
    xcb_send_event(m_connection, 0, window, mask, reinterpret_cast<const char*>(&message));
    xcb_flush(m_connection);
}

void XClient::put(xcb_window_t window, const std::string& property, xcb_atom_t type,
                  const std::vector<uint32_t>& numbers) const {
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32,
                        static_cast<uint32_t>(numbers.size()), numbers.data());
    settle();
}

void XClient::own(const std::string& selection, xcb_window_t window) const {
    xcb_set_selection_owner(m_connection, window, atom(selection), XCB_CURRENT_TIME);
    settle();
    send(root(), atom("MANAGER"), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
         {XCB_CURRENT_TIME, atom(selection), window, 0, 0});
}

void XClient::askToClose(xcb_window_t window) const {
    send(window, atom("WM_PROTOCOLS"), XCB_EVENT_MASK_NO_EVENT,
         {atom("WM_DELETE_WINDOW"), XCB_CURRENT_TIME, 0, 0, 0});
}

} // namespace Harness
