#include "WindowServer/Wayland/Input/Seat.h"

#include <utility>

namespace WindowServer::Wayland {

Seat::Seat(const Connection& connection, const Stages& stages, StagedWindows& windows)
    : m_seat(connection.bindSeat()), m_keyboard(connection, stages, windows),
      m_pointer(connection, stages, windows, m_keyboard.keymap()), m_touch(m_pointer) {
    if (!m_seat) return;
    static const wl_seat_listener listener = {.capabilities = Tell<&Seat::equip>(),
                                              .name = Ignored()};
    wl_seat_add_listener(m_seat.get(), &listener, this);
}

void Seat::equip(uint32_t capabilities) {
    const uint32_t before = std::exchange(m_capabilities, capabilities);
    const uint32_t come = capabilities & ~before;
    const uint32_t gone = before & ~capabilities;
    if (gone & WL_SEAT_CAPABILITY_POINTER) m_pointer.leave(); // Nothing else tells it.
    if (gone & WL_SEAT_CAPABILITY_TOUCH) m_touch.cancel();
    if (come & WL_SEAT_CAPABILITY_POINTER) m_pointer.connectTo(m_seat.get());
    if (come & WL_SEAT_CAPABILITY_TOUCH) m_touch.connectTo(m_seat.get());
    if (come & WL_SEAT_CAPABILITY_KEYBOARD) m_keyboard.connectTo(m_seat.get());
}

} // namespace WindowServer::Wayland
