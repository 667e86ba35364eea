#pragma once

#include "Harness/Area.h"
#include "Harness/XClient.h"

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
    TestWindow(const std::string& display, const Area& area, Kind kind = Kind::Popup);

    xcb_window_t number() const { return m_window; }
    const XClient& client() const { return m_client; }

    void paint(uint32_t colour);
    /// Covers the window with a repeated tile whose pixels the function tells.
    void paint(int width, int height, const std::function<uint32_t(int x, int y)>& colourAt);
    void paintChecks(int size); ///< Black and white.

    void setStates(const std::vector<std::string>& states); ///< "_NET_WM_STATE_ABOVE"; first
    void show();
    void hide();
    void raise() { configure(XCB_CONFIG_WINDOW_STACK_MODE, {XCB_STACK_MODE_ABOVE}); }
    void lower() { configure(XCB_CONFIG_WINDOW_STACK_MODE, {XCB_STACK_MODE_BELOW}); }
    void place(const Area& area);
    void takeFocus();

    /// What was heard since the last call.
    std::vector<Event> takeEvents();
    bool hears(uint8_t type, uint8_t detail); ///< Whether one of them was such.

private:
    void configure(uint16_t mask, const std::vector<int32_t>& values);
    void clear();

    XClient m_client;
    xcb_window_t m_window;
};

} // namespace Harness
