#include "WindowServer/X11/Desktop/Monitors.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/PixelMath.h"

#include <algorithm>

#include <xcb/randr.h>

namespace WindowServer {

std::vector<Monitors::Monitor> Monitors::connected() {
    if (!m_connection.events().randr) {
        const auto& screen = m_connection.screen();
        const PixelRect whole{0, 0, screen.width_in_pixels, screen.height_in_pixels};
        return {{"screen", whole, true, "screen"}};
    }
    const auto reply =
        m_connection.reply(xcb_randr_get_monitors_reply,
                           xcb_randr_get_monitors(m_connection.xcb(), m_connection.root(), true));
    if (!reply) return {};

    std::vector<Monitor> monitors;
    auto it = xcb_randr_get_monitors_monitors_iterator(reply.get());
    for (; it.rem; xcb_randr_monitor_info_next(&it)) {
        if (it.data->width == 0 || it.data->height == 0) continue;
        const auto atom = m_connection.reply(xcb_get_atom_name_reply,
                                             xcb_get_atom_name(m_connection.xcb(), it.data->name));
        Monitor monitor;
        if (atom)
            monitor.name.assign(xcb_get_atom_name_name(atom.get()),
                                static_cast<size_t>(xcb_get_atom_name_name_length(atom.get())));
        monitor.pixels = {it.data->x, it.data->y, it.data->width, it.data->height};
        monitor.primary = it.data->primary;
        monitor.identity = monitor.name;
        if (it.data->nOutput > 0)
            monitor.identity = identityOf(xcb_randr_monitor_info_outputs(it.data)[0], monitor.name);
        monitors.push_back(std::move(monitor));
    }
    return monitors;
}

std::string Monitors::identityOf(uint32_t output, const std::string& name) {
    const auto reply = m_connection.reply(
        xcb_randr_get_output_property_reply,
        xcb_randr_get_output_property(m_connection.xcb(), output, m_connection.atom("EDID"),
                                      XCB_ATOM_ANY, 0, 32, false, false));
    if (!reply || reply->format != 8 || reply->num_items < 16) return name;
    const auto* edid = xcb_randr_get_output_property_data(reply.get());
    return DisplayNumbers::identityOf(std::string(edid, edid + reply->num_items));
}

std::vector<Display> Monitors::query(const ScaleOf& scaleOf) {
    std::vector<Monitor> monitors = connected();
    std::ranges::sort(monitors, [](const Monitor& a, const Monitor& b) {
        return std::pair(!a.primary, a.name) < std::pair(!b.primary, b.name);
    });

    std::vector<Display> displays;
    for (const Monitor& monitor : monitors) {
        const bool clone = std::ranges::any_of(monitors, [&](const Monitor& other) {
            const bool earlier = &other < &monitor;
            return &other != &monitor && contains(other.pixels, monitor.pixels) &&
                   (earlier || !contains(monitor.pixels, other.pixels));
        });
        if (clone) continue;
        displays.push_back({m_numbers.numberOf(monitor.identity, monitor.name),
                            monitor.name,
                            monitor.pixels,
                            scaleOf(monitor.name),
                            {},
                            {}});
    }

    // Origins stay in device pixels and sizes become points, as Qt lays its screens out, so one
    // flip of the y axis leads from here to Qt's coordinates.
    for (Display& display : displays) {
        const Display& first = displays.front();
        const double firstBottom = first.pixels.y + first.pixels.height / first.scale;
        const double height = display.pixels.height / display.scale;
        display.frame =
            CGRectMake(display.pixels.x - first.pixels.x, firstBottom - (display.pixels.y + height),
                       display.pixels.width / display.scale, height);
    }
    return displays;
}

} // namespace WindowServer
