#pragma once

#include "Harness/Input.h"

struct org_kde_kwin_fake_input;
struct wl_display;
struct wl_seat;
struct zwlr_virtual_pointer_manager_v1;
struct zwlr_virtual_pointer_v1;
struct zwp_virtual_keyboard_manager_v1;
struct zwp_virtual_keyboard_v1;

namespace Harness {

/// In a Wayland session.
class WaylandInput : public Hand {
public:
    /// The socket is the compositor's, and the bounds are those of all its outputs.
    WaylandInput(const std::string& socket, const Area& bounds);
    ~WaylandInput() override;

    const Point& pointer() const { return m_pointerAt; } ///< Where it has moved to.
    void tap(const Area& area) const; ///< By a finger, which KWin alone takes from a program.

    struct Devices { ///< As far as the compositor has them: KWin the first, others the rest.
        org_kde_kwin_fake_input* fake = nullptr;
        wl_seat* seat = nullptr;
        zwlr_virtual_pointer_manager_v1* pointers = nullptr;
        zwp_virtual_keyboard_manager_v1* keyboards = nullptr;
    };

private:
    void fake(uint8_t type, uint8_t detail, int x, int y) const override;
    void jump(int x, int y) const;
    void wheel(int steps) const;
    void settle() const;

    wl_display* m_display;
    Area m_bounds;
    Devices m_devices;
    zwlr_virtual_pointer_v1* m_pointer = nullptr;
    zwp_virtual_keyboard_v1* m_keyboard = nullptr;
    mutable Point m_pointerAt;
};

} // namespace Harness
