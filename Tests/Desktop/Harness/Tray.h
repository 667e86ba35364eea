#pragma once

#include "Harness/Area.h"
#include "Harness/XClient.h"

namespace Harness {

/// A system tray of the XEmbed kind: icons dock in a row, from the left.
class Tray {
public:
    static constexpr int iconSize = 24;
    static constexpr int capacity = 4;

    Tray(const std::string& display, int x, int y, uint32_t ground = 0x000000)
        : m_client(display), m_corner{x, y}, m_window(xcb_generate_id(m_client)) {
        const uint32_t values[] = {ground, 1};
        xcb_create_window(m_client, XCB_COPY_FROM_PARENT, m_window, m_client.root(),
                          static_cast<int16_t>(x), static_cast<int16_t>(y), capacity * iconSize,
                          iconSize, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
        xcb_map_window(m_client, m_window);
        m_client.own("_NET_SYSTEM_TRAY_S0", m_window);
    }

    /// Where the icons stand on the screen, the newest last.
    std::vector<Area> icons() {
        docked();
        std::vector<Area> result;
        const auto tree = m_client.ask(xcb_query_tree_reply, xcb_query_tree(m_client, m_window));
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i)
            if (const auto icon = m_client.ask(
                    xcb_get_geometry_reply,
                    xcb_get_geometry(m_client, xcb_query_tree_children(tree.get())[i])))
                result.push_back({m_corner.x + icon->x, m_corner.y, iconSize, iconSize});
        return result;
    }
    /// How many icons have come so far, also those that have gone.
    int docked() {
        m_client.settle();
        while (const auto event = m_client.nextEvent()) {
            const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
            if ((event->response_type & 0x7F) == XCB_CLIENT_MESSAGE &&
                message.type == m_client.atom("_NET_SYSTEM_TRAY_OPCODE") &&
                message.data.data32[1] == 0) // A request to dock.
                dock(message.data.data32[2]);
        }
        return m_docked;
    }

private:
    void dock(xcb_window_t icon) {
        const int x = m_docked++ % capacity * iconSize;
        const uint32_t size[] = {iconSize, iconSize};
        xcb_configure_window(m_client, icon, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                             size);
        xcb_reparent_window(m_client, icon, m_window, static_cast<int16_t>(x), 0);
        xcb_map_window(m_client, icon);
        // That it is embedded.
        m_client.send(icon, m_client.atom("_XEMBED"), XCB_EVENT_MASK_NO_EVENT,
                      {XCB_CURRENT_TIME, 0, 0, m_window, 0});
        m_client.settle();
    }

    XClient m_client;
    Point m_corner;
    xcb_window_t m_window;
    int m_docked = 0;
};

} // namespace Harness
