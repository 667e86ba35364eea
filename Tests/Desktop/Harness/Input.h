#pragma once

#include "Harness/XClient.h"

namespace Harness {

/// A hand on the mouse and the keyboard: the server takes what it does for real devices.
class Input {
public:
    explicit Input(const std::string& display) : m_client(display) {}

    void move(int x, int y) const;
    void press(uint8_t button) const; ///< 1 left, 2 middle, 3 right, 4 and 5 the wheel.
    void release(uint8_t button) const;
    void click(uint8_t button) const;
    void hold(uint8_t keycode) const; ///< As long as a finger would, so the key repeats.
    void letGo(uint8_t keycode) const;
    void strike(uint8_t keycode) const;

private:
    void fake(uint8_t type, uint8_t detail, int x = 0, int y = 0) const;

    XClient m_client;
};

} // namespace Harness
