#include "Glass.h"

#include <stdexcept>

namespace Benchmarks {

namespace {

constexpr uint32_t darkGlass = 0x66000000;

xcb_visualid_t visualWithAlpha(const xcb_screen_t& screen) {
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem != 0;
         xcb_depth_next(&depth))
        if (depth.data->depth == 32 && depth.data->visuals_len > 0)
            return xcb_depth_visuals(depth.data)->visual_id;
    throw std::runtime_error("no visual with an alpha channel");
}

} // namespace

Glass::Glass(const std::string& display, const Harness::Area& area) : m_client(display) {
    const xcb_visualid_t visual = visualWithAlpha(m_client.screen());
    const xcb_colormap_t colours = xcb_generate_id(m_client);
    xcb_create_colormap(m_client, XCB_COLORMAP_ALLOC_NONE, colours, m_client.root(), visual);
    const xcb_window_t window = xcb_generate_id(m_client);
    const uint32_t values[] = {darkGlass, 0, 1, colours};
    xcb_create_window(m_client, 32, window, m_client.root(), static_cast<int16_t>(area.x),
                      static_cast<int16_t>(area.y), static_cast<uint16_t>(area.width),
                      static_cast<uint16_t>(area.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT |
                          XCB_CW_COLORMAP,
                      values);
    xcb_map_window(m_client, window);
    m_client.settle();
}

} // namespace Benchmarks
