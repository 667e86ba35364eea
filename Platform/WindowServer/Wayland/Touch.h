#pragma once

#include "WindowServer/Wayland/Connection.h"

#include <QPointF>

#include <optional>

namespace WindowServer::Wayland {

class Pointer;
class Stages;

/// The first finger on a touch screen, as a pointer with its left button held.
class Touch {
public:
    Touch(const Stages& stages, Pointer& pointer) : m_stages(stages), m_pointer(pointer) {}

    void connectTo(wl_seat* seat);

private:
    void down(uint32_t, uint32_t time, wl_surface* surface, int finger, wl_fixed_t x, wl_fixed_t y);
    void move(uint32_t time, int finger, wl_fixed_t x, wl_fixed_t y);
    void up(uint32_t, uint32_t time, int finger);
    void cancel();

    const Stages& m_stages;
    Pointer& m_pointer;
    Owned<wl_touch> m_touch;
    std::optional<int> m_finger;
    QPointF m_corner; ///< Of the stage that it was put on.
};

} // namespace WindowServer::Wayland
