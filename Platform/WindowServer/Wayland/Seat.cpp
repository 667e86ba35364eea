#include "WindowServer/Wayland/Seat.h"

#include <utility>

namespace WindowServer::Wayland {

Seat::Seat(const Connection& connection, const Stages& stages, StagedWindows& windows)
    : m_seat(connection.bindSeat()), m_keyboard(connection, stages, windows),
      m_pointer(connection, stages, windows, m_keyboard.keymap()), m_touch(stages, m_pointer) {
    if (!m_seat) return;
    static const wl_seat_listener listener = {
        .capabilities =
            [](void* data, wl_seat* seat, uint32_t capabilities) {
                auto* const self = static_cast<Seat*>(data);
                const uint32_t come =
                    capabilities & ~std::exchange(self->m_capabilities, capabilities);
                if (come & WL_SEAT_CAPABILITY_POINTER) self->m_pointer.connectTo(seat);
                if (come & WL_SEAT_CAPABILITY_TOUCH) self->m_touch.connectTo(seat);
                if (come & WL_SEAT_CAPABILITY_KEYBOARD) self->m_keyboard.connectTo(seat);
            },
        .name = [](void*, wl_seat*, const char*) {}};
    wl_seat_add_listener(m_seat.get(), &listener, this);
}

} // namespace WindowServer::Wayland
