#include "WindowServer/Wayland/Input/Touch.h"

#include "WindowServer/Wayland/Input/Pointer.h"

namespace WindowServer::Wayland {

void Touch::connectTo(wl_seat* seat) {
    m_touch.reset(wl_seat_get_touch(seat));
    static const wl_touch_listener listener = {.down = Tell<&Touch::down>(),
                                               .up = Tell<&Touch::up>(),
                                               .motion = Tell<&Touch::move>(),
                                               .frame = Ignored(),
                                               .cancel = Tell<&Touch::cancel>(),
                                               .shape = Ignored(),
                                               .orientation = Ignored()};
    wl_touch_add_listener(m_touch.get(), &listener, this);
}

void Touch::down(uint32_t, uint32_t, wl_surface* surface, int finger, wl_fixed_t x, wl_fixed_t y) {
    if (m_finger || !m_pointer.enter(surface)) return;
    m_finger = finger;
    m_pointer.move(pointFrom(x, y));
    m_pointer.button(Qt::LeftButton, true);
}

void Touch::move(uint32_t, int finger, wl_fixed_t x, wl_fixed_t y) {
    if (finger == m_finger) m_pointer.move(pointFrom(x, y));
}

void Touch::up(uint32_t, uint32_t, int finger) {
    if (finger != m_finger) return;
    m_pointer.button(Qt::LeftButton, false);
    cancel();
}

void Touch::cancel() {
    if (std::exchange(m_finger, std::nullopt)) m_pointer.leave();
}

} // namespace WindowServer::Wayland
