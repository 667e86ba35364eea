#include "Harness/PlainSheet.h"

#include <poll.h>

#include <xcb/shape.h>

namespace Harness {

PlainSheet::PlainSheet(const std::string& display, const xcb_rectangle_t& area)
    : m_client(display), m_area(area),
      m_shapeNotify(xcb_get_extension_data(m_client, &xcb_shape_id)->first_event) {
    make();
    m_client.settle();
    m_thread = std::thread([this] { run(); });
}

PlainSheet::~PlainSheet() {
    m_stop = true;
    m_thread.join();
}

void PlainSheet::make() {
    m_window = xcb_generate_id(m_client);
    const uint32_t values[] = {0x404040, true,
                               XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE};
    xcb_create_window(m_client, XCB_COPY_FROM_PARENT, m_window, m_client.root(), m_area.x, m_area.y,
                      m_area.width, m_area.height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    xcb_shape_select_input(m_client, m_window, true);
    dropShapes();
    xcb_map_window(m_client, m_window);
}

void PlainSheet::put() {
    const uint32_t values[] = {static_cast<uint32_t>(m_area.x),
                               static_cast<uint32_t>(m_area.y),
                               m_area.width,
                               m_area.height,
                               0,
                               XCB_STACK_MODE_ABOVE};
    xcb_configure_window(m_client, m_window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT | XCB_CONFIG_WINDOW_BORDER_WIDTH |
                             XCB_CONFIG_WINDOW_STACK_MODE,
                         values);
}

void PlainSheet::dropShapes() {
    for (const xcb_shape_sk_t kind : {XCB_SHAPE_SK_BOUNDING, XCB_SHAPE_SK_CLIP})
        xcb_shape_mask(m_client, XCB_SHAPE_SO_SET, kind, m_window, 0, 0, XCB_PIXMAP_NONE);
    xcb_shape_rectangles(m_client, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                         m_window, 0, 0, 0, nullptr);
}

void PlainSheet::run() {
    pollfd readable = {xcb_get_file_descriptor(m_client), POLLIN, 0};
    while (!m_stop) {
        while (const auto event = m_client.nextEvent())
            handle(*event);
        xcb_flush(m_client);
        poll(&readable, 1, 50);
    }
}

/// What is put right is told of once more, and then found right.
void PlainSheet::handle(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7F;
    if (type == XCB_CONFIGURE_NOTIFY) {
        put();
    } else if (type == XCB_UNMAP_NOTIFY || type == XCB_DESTROY_NOTIFY ||
               type == XCB_REPARENT_NOTIFY) {
        // All three tell the window first.
        const auto& notify = reinterpret_cast<const xcb_unmap_notify_event_t&>(event);
        if (notify.window != m_window) return;
        xcb_destroy_window(m_client, m_window);
        make();
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notify.state == XCB_PROPERTY_NEW_VALUE)
            xcb_delete_property(m_client, m_window, notify.atom);
    } else if (type == m_shapeNotify) {
        const auto& notify = reinterpret_cast<const xcb_shape_notify_event_t&>(event);
        const bool isWished =
            notify.shape_kind == XCB_SHAPE_SK_INPUT ? notify.extents_width == 0 : !notify.shaped;
        if (!isWished) dropShapes();
    }
}

} // namespace Harness
