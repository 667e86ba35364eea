#include "WindowServer/Wayland/Touch.h"

#include "WindowServer/Wayland/Pointer.h"
#include "WindowServer/Wayland/Stages.h"

#include <linux/input-event-codes.h>

namespace WindowServer::Wayland {

void Touch::connectTo(wl_seat* seat) {
    m_touch.reset(wl_seat_get_touch(seat));
    static const wl_touch_listener listener = {
        .down =
            [](void* self, wl_touch*, uint32_t, uint32_t time, wl_surface* surface, int finger,
               wl_fixed_t x, wl_fixed_t y) {
                static_cast<Touch*>(self)->down(time, surface, finger,
                                                {wl_fixed_to_double(x), wl_fixed_to_double(y)});
            },
        .up = [](void* self, wl_touch*, uint32_t, uint32_t time,
                 int finger) { static_cast<Touch*>(self)->up(time, finger); },
        .motion =
            [](void* self, wl_touch*, uint32_t time, int finger, wl_fixed_t x, wl_fixed_t y) {
                static_cast<Touch*>(self)->move(time, finger,
                                                {wl_fixed_to_double(x), wl_fixed_to_double(y)});
            },
        .frame = [](void*, wl_touch*) {},
        .cancel = [](void* self, wl_touch*) { static_cast<Touch*>(self)->cancel(); },
        .shape = [](void*, wl_touch*, int, wl_fixed_t, wl_fixed_t) {},
        .orientation = [](void*, wl_touch*, int, wl_fixed_t) {}};
    wl_touch_add_listener(m_touch.get(), &listener, this);
}

void Touch::down(uint32_t time, const wl_surface* surface, int finger, QPointF point) {
    const Stage* const stage = m_stages.of(surface);
    if (!stage || m_finger) return;
    m_finger = finger;
    m_corner = stage->place().topLeft();
    m_pointer.move(time, m_corner + point);
    m_pointer.button(time, BTN_LEFT, true);
}

void Touch::move(uint32_t time, int finger, QPointF point) {
    if (finger == m_finger) m_pointer.move(time, m_corner + point);
}

void Touch::up(uint32_t time, int finger) {
    if (finger != m_finger) return;
    m_pointer.button(time, BTN_LEFT, false);
    cancel();
}

void Touch::cancel() {
    if (std::exchange(m_finger, std::nullopt)) m_pointer.leave();
}

} // namespace WindowServer::Wayland
