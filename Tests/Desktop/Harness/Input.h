#pragma once

#include "Harness/Area.h"
#include "Harness/Keys.h"
#include "Harness/XClient.h"

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
    void click(uint8_t button) const;
    void click(const Area& area, uint8_t button = 1) const; ///< In the middle of it.
    /// A press in the middle, the moves and a release.
    void drag(const Area& from, const std::vector<Point>& moves) const;

    void hold(uint8_t keycode) const { fake(XCB_KEY_PRESS, keycode); } ///< So the key repeats.
    void letGo(uint8_t keycode) const { fake(XCB_KEY_RELEASE, keycode); }
    void strike(uint8_t keycode, int times = 1) const;
    void strike(const std::vector<uint8_t>& keys) const; ///< One after the other.
    void strikeTogether(const std::vector<uint8_t>& keys) const;
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
    void fake(uint8_t type, uint8_t detail, int x, int y) const override;

    XClient m_client;
};

} // namespace Harness
