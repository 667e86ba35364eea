#pragma once

#include "WindowServer/Wayland/Connection.h"

#include <optional>

namespace WindowServer::Wayland {

class Pointer;

/// The first finger on a touch screen, as a pointer with its left button held.
class Touch {
public:
    explicit Touch(Pointer& pointer) : m_pointer(pointer) {}

    void connectTo(wl_seat* seat);
    /// Whatever it is about is no click.
    void cancel();

private:
    void down(uint32_t, uint32_t, wl_surface* surface, int finger, wl_fixed_t x, wl_fixed_t y);
    void move(uint32_t, int finger, wl_fixed_t x, wl_fixed_t y);
    void up(uint32_t, uint32_t, int finger);

    Pointer& m_pointer;
    Owned<wl_touch> m_touch;
    std::optional<int> m_finger;
};

} // namespace WindowServer::Wayland
