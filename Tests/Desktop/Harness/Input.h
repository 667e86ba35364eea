#pragma once

#include "Harness/Area.h"
#include "Harness/Keys.h"
#include "Harness/XClient.h"

#include <algorithm>

#include <xcb/xtest.h>

namespace Harness {

/// A hand on the mouse and the keyboard: what it does is taken for real devices'.
class Hand {
public:
    virtual ~Hand() = default;

    void move(int x, int y) const { fake(XCB_MOTION_NOTIFY, 0, x, y); }
    void move(const Point& to) const { move(to.x, to.y); }
    /// Buttons: 1 left, 2 middle, 3 right, 4 and 5 the wheel.
    void press(uint8_t button) const { fake(XCB_BUTTON_PRESS, button); }
    void release(uint8_t button) const { fake(XCB_BUTTON_RELEASE, button); }
    void click(uint8_t button) const {
        press(button);
        release(button);
    }
    /// In the middle of it.
    void click(const Area& area, uint8_t button = 1) const {
        move(area.middle());
        click(button);
    }
    /// A press in the middle, the moves and, if it is to end so, a release.
    void drag(const Area& from, const std::vector<Point>& moves, bool letsGo = true) const {
        move(from.middle());
        press(1);
        for (const Point& point : moves)
            move(point);
        if (letsGo) release(1);
    }

    void hold(uint8_t keycode) const { fake(XCB_KEY_PRESS, keycode); } ///< So the key repeats.
    void letGo(uint8_t keycode) const { fake(XCB_KEY_RELEASE, keycode); }
    void strike(uint8_t keycode, int times = 1) const {
        for (int i = 0; i < times; ++i) {
            hold(keycode);
            letGo(keycode);
        }
    }
    /// One after the other.
    void strike(const std::vector<uint8_t>& keys) const {
        for (const uint8_t key : keys)
            strike(key);
    }
    void strikeTogether(const std::vector<uint8_t>& keys) const {
        for (const uint8_t key : keys)
            hold(key);
        std::for_each(keys.rbegin(), keys.rend(), [this](uint8_t key) { letGo(key); });
    }
    void strikeChord() const { strikeTogether(chordKeys); }

private:
    /// Tells it as the X protocol numbers it, and waits until it is taken.
    virtual void fake(uint8_t type, uint8_t detail, int x = 0, int y = 0) const = 0;
};

/// On an X server.
class Input : public Hand {
public:
    explicit Input(const std::string& display) : m_client(display) {}

private:
    void fake(uint8_t type, uint8_t detail, int x, int y) const override {
        xcb_test_fake_input(m_client, type, detail, XCB_CURRENT_TIME, m_client.root(),
                            static_cast<int16_t>(x), static_cast<int16_t>(y), 0);
        m_client.settle();
    }

    XClient m_client;
};

} // namespace Harness
