#pragma once

#include "Harness/Area.h"
#include "Harness/XClient.h"

#include <algorithm>
#include <functional>

namespace Harness {

/// Colours that no blurred and darkened picture of anything holds.
constexpr uint32_t marker = 0xFF00FF;
constexpr uint32_t white = 0xFFFFFF;
constexpr uint32_t black = 0x000000;

/// A program's window on the desktop: it shows what it is told to and keeps what it hears.
class TestWindow {
public:
    enum class Kind {
        Popup,  ///< Placed by itself, as menus and notifications are.
        Managed ///< Left to the window manager, if there is one.
    };

    struct Event {
        uint8_t type = 0; ///< As the core protocol numbers them: XCB_BUTTON_PRESS.
        uint8_t detail = 0;
        int x = 0; ///< Of the screen; 0 for events without a place.
        int y = 0;
        bool operator==(const Event&) const = default;
    };

    /// The window is made unmapped and plain `marker`.
    TestWindow(const std::string& display, const Area& area, Kind kind = Kind::Popup)
        : m_client(display), m_window(xcb_generate_id(m_client)) {
        const uint32_t values[] = {marker, kind == Kind::Popup ? 1U : 0U, heard};
        xcb_create_window(m_client, XCB_COPY_FROM_PARENT, m_window, m_client.root(),
                          static_cast<int16_t>(area.x), static_cast<int16_t>(area.y),
                          extent(area.width), extent(area.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
        m_client.settle();
    }

    xcb_window_t number() const { return m_window; }
    const XClient& client() const { return m_client; }

    void paint(uint32_t colour) {
        xcb_change_window_attributes(m_client, m_window, XCB_CW_BACK_PIXEL, &colour);
        clear();
    }
    /// Covers the window with a repeated tile whose pixels the function tells.
    void paint(int width, int height, const std::function<uint32_t(int x, int y)>& colourAt) {
        std::vector<uint32_t> pixels;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                pixels.push_back(colourAt(x, y));

        const xcb_pixmap_t tile = xcb_generate_id(m_client);
        const xcb_gcontext_t context = xcb_generate_id(m_client);
        const uint8_t depth = m_client.screen().root_depth;
        xcb_create_pixmap(m_client, depth, tile, m_window, extent(width), extent(height));
        xcb_create_gc(m_client, context, tile, 0, nullptr);
        xcb_put_image(m_client, XCB_IMAGE_FORMAT_Z_PIXMAP, tile, context, extent(width),
                      extent(height), 0, 0, 0, depth,
                      static_cast<uint32_t>(pixels.size() * sizeof(uint32_t)),
                      reinterpret_cast<const uint8_t*>(pixels.data()));
        xcb_change_window_attributes(m_client, m_window, XCB_CW_BACK_PIXMAP, &tile);
        xcb_free_gc(m_client, context);
        xcb_free_pixmap(m_client, tile);
        clear();
    }
    /// Black and white.
    void paintChecks(int size) {
        paint(2 * size, 2 * size,
              [size](int x, int y) { return (x < size) == (y < size) ? white : black; });
    }

    void show() {
        xcb_map_window(m_client, m_window);
        m_client.settle();
    }
    void hide() {
        xcb_unmap_window(m_client, m_window);
        m_client.settle();
    }
    void raise() { configure(XCB_CONFIG_WINDOW_STACK_MODE, {XCB_STACK_MODE_ABOVE}); }
    void lower() { configure(XCB_CONFIG_WINDOW_STACK_MODE, {XCB_STACK_MODE_BELOW}); }
    void place(const Area& area) {
        configure(XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                      XCB_CONFIG_WINDOW_HEIGHT,
                  {area.x, area.y, area.width, area.height});
    }
    void takeFocus() {
        xcb_set_input_focus(m_client, XCB_INPUT_FOCUS_PARENT, m_window, XCB_CURRENT_TIME);
        m_client.settle();
    }

    /// What was heard since the last call.
    std::vector<Event> takeEvents() {
        m_client.settle();
        std::vector<Event> result;
        while (const auto event = m_client.nextEvent()) {
            const uint8_t type = event->response_type & 0x7F;
            if (type == XCB_MAPPING_NOTIFY) continue; // every client gets these
            Event heardNow;
            heardNow.type = type;
            heardNow.detail = event->pad0;
            // Keys, buttons and motion share one layout.
            if (type >= XCB_KEY_PRESS && type <= XCB_MOTION_NOTIFY) {
                const auto& input = reinterpret_cast<const xcb_button_press_event_t&>(*event);
                heardNow.x = input.root_x;
                heardNow.y = input.root_y;
            }
            result.push_back(heardNow);
        }
        return result;
    }
    /// Whether one of them was such.
    bool hears(uint8_t type, uint8_t detail) {
        return std::ranges::any_of(takeEvents(), [=](const Event& event) {
            return event.type == type && event.detail == detail;
        });
    }

private:
    void configure(uint16_t mask, const std::vector<int32_t>& values) {
        xcb_configure_window(m_client, m_window, mask, values.data());
        m_client.settle();
    }
    void clear() {
        xcb_clear_area(m_client, 0, m_window, 0, 0, 0, 0);
        m_client.settle();
    }
    static uint16_t extent(int pixels) { return static_cast<uint16_t>(pixels); }

    static constexpr uint32_t heard = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                      XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                                      XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_FOCUS_CHANGE;

    XClient m_client;
    xcb_window_t m_window;
};

} // namespace Harness
