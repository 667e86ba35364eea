#include "Harness/Tray.h"

#include <algorithm>

namespace Harness {

namespace {

constexpr uint32_t requestDock = 0;
constexpr uint32_t embeddedNotify = 0;
constexpr int capacity = 4;

} // namespace

Tray::Tray(const std::string& display, int x, int y, uint32_t ground)
    : m_client(display), m_area{x, y, capacity * iconSize, iconSize},
      m_window(xcb_generate_id(m_client)), m_opcode(m_client.atom("_NET_SYSTEM_TRAY_OPCODE")),
      m_embedding(m_client.atom("_XEMBED")) {
    const uint32_t values[] = {ground, 1, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
    xcb_create_window(m_client, XCB_COPY_FROM_PARENT, m_window, m_client.root(),
                      static_cast<int16_t>(x), static_cast<int16_t>(y),
                      static_cast<uint16_t>(m_area.width), iconSize, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    xcb_map_window(m_client, m_window);

    const xcb_atom_t selection = m_client.atom("_NET_SYSTEM_TRAY_S0");
    xcb_set_selection_owner(m_client, m_window, selection, XCB_CURRENT_TIME);
    m_client.settle();
    m_client.send(m_client.root(), m_client.atom("MANAGER"), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                  {XCB_CURRENT_TIME, selection, m_window, 0, 0});
}

void Tray::listen() {
    m_client.settle();
    while (const auto event = m_client.nextEvent())
        handle(*event);
}

int Tray::docked() {
    listen();
    return m_docked;
}

std::vector<Area> Tray::icons() {
    listen();
    std::vector<Area> result;
    for (size_t i = 0; i < m_icons.size(); ++i)
        result.push_back({m_area.x + static_cast<int>(i) * iconSize, m_area.y, iconSize, iconSize});
    return result;
}

void Tray::handle(const xcb_generic_event_t& event) {
    const uint8_t type = event.response_type & 0x7F;
    if (type == XCB_CLIENT_MESSAGE) {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (message.type == m_opcode && message.data.data32[1] == requestDock)
            dock(message.data.data32[2]);
    } else if (type == XCB_DESTROY_NOTIFY) {
        remove(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
    } else if (type == XCB_REPARENT_NOTIFY) {
        const auto& moved = reinterpret_cast<const xcb_reparent_notify_event_t&>(event);
        if (moved.parent != m_window) remove(moved.window);
    }
}

void Tray::dock(xcb_window_t icon) {
    xcb_reparent_window(m_client, icon, m_window, 0, 0);
    xcb_map_window(m_client, icon);
    m_client.send(icon, m_embedding, XCB_EVENT_MASK_NO_EVENT,
                  {XCB_CURRENT_TIME, embeddedNotify, 0, m_window, 0});
    m_icons.push_back(icon);
    ++m_docked;
    arrange();
}

void Tray::remove(xcb_window_t icon) {
    std::erase(m_icons, icon);
    arrange();
}

void Tray::arrange() {
    int x = 0;
    for (const xcb_window_t icon : m_icons) {
        const int32_t place[] = {x, 0, iconSize, iconSize};
        xcb_configure_window(m_client, icon,
                             XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                                 XCB_CONFIG_WINDOW_HEIGHT,
                             place);
        x += iconSize;
    }
    m_client.settle();
}

} // namespace Harness
