#pragma once

#include "WindowServer/Wayland/Input/Keyboard.h"
#include "WindowServer/Wayland/Input/Pointer.h"
#include "WindowServer/Wayland/Input/Touch.h"

namespace WindowServer::Wayland {

/// The user's mouse, touch screen and keyboard, as they come and go.
class Seat {
public:
    Seat(const Connection& connection, const Stages& stages, StagedWindows& windows);

    Keyboard& keyboard() { return m_keyboard; }
    Pointer& pointer() { return m_pointer; }

private:
    void equip(uint32_t capabilities);

    Owned<wl_seat> m_seat;
    Keyboard m_keyboard;
    Pointer m_pointer;
    Touch m_touch;
    uint32_t m_capabilities = 0;
};

} // namespace WindowServer::Wayland
