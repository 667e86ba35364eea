#include "WindowServer/Wayland/Touch.h"

#include "WindowServer/Wayland/Pointer.h"
#include "WindowServer/Wayland/Stages.h"

#include <linux/input-event-codes.h>

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

void Touch::down(uint32_t, uint32_t time, wl_surface* surface, int finger, wl_fixed_t x,
                 wl_fixed_t y) {
    const Stage* const stage = m_stages.of(surface);
    if (!stage || m_finger) return;
    m_finger = finger;
    m_corner = stage->place().topLeft();
    m_pointer.move(time, m_corner + pointFrom(x, y));
    m_pointer.button(time, BTN_LEFT, true);
}

void Touch::move(uint32_t time, int finger, wl_fixed_t x, wl_fixed_t y) {
    if (finger == m_finger) m_pointer.move(time, m_corner + pointFrom(x, y));
}

void Touch::up(uint32_t, uint32_t time, int finger) {
    if (finger != m_finger) return;
    m_pointer.button(time, BTN_LEFT, false);
    cancel();
}

void Touch::cancel() {
    if (std::exchange(m_finger, std::nullopt)) m_pointer.leave();
}

} // namespace WindowServer::Wayland
