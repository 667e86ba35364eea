#include "Harness/Input.h"

#include <ranges>

#include <xcb/xtest.h>

namespace Harness {

void Input::fake(uint8_t type, uint8_t detail, int x, int y) const {
    xcb_test_fake_input(m_client, type, detail, XCB_CURRENT_TIME, m_client.root(),
                        static_cast<int16_t>(x), static_cast<int16_t>(y), 0);
    m_client.settle();
}

void Hand::click(uint8_t button) const {
    press(button);
    release(button);
}

void Hand::click(const Area& area, uint8_t button) const {
    move(area.middle());
    click(button);
}

void Hand::drag(const Area& from, const std::vector<Point>& moves) const {
    move(from.middle());
    press(1);
    for (const Point& point : moves)
        move(point);
    release(1);
}

void Hand::strike(uint8_t keycode, int times) const {
    for (int i = 0; i < times; ++i) {
        hold(keycode);
        letGo(keycode);
    }
}

void Hand::strike(const std::vector<uint8_t>& keys) const {
    for (const uint8_t key : keys)
        strike(key);
}

void Hand::strikeTogether(const std::vector<uint8_t>& keys) const {
    for (const uint8_t key : keys)
        hold(key);
    for (const uint8_t key : std::views::reverse(keys))
        letGo(key);
}

} // namespace Harness
