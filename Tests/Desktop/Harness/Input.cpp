#include "Harness/Input.h"

#include <xcb/xtest.h>

namespace Harness {

void Input::fake(uint8_t type, uint8_t detail, int x, int y) const {
    xcb_test_fake_input(m_client, type, detail, XCB_CURRENT_TIME, m_client.root(),
                        static_cast<int16_t>(x), static_cast<int16_t>(y), 0);
    m_client.settle();
}

void Input::move(int x, int y) const { fake(XCB_MOTION_NOTIFY, 0, x, y); }

void Input::press(uint8_t button) const { fake(XCB_BUTTON_PRESS, button); }

void Input::release(uint8_t button) const { fake(XCB_BUTTON_RELEASE, button); }

void Input::click(uint8_t button) const {
    press(button);
    release(button);
}

void Input::hold(uint8_t keycode) const { fake(XCB_KEY_PRESS, keycode); }

void Input::letGo(uint8_t keycode) const { fake(XCB_KEY_RELEASE, keycode); }

void Input::strike(uint8_t keycode) const {
    hold(keycode);
    letGo(keycode);
}

} // namespace Harness
