#include "Harness/WaylandInput.h"

#include "Harness/Await.h"

#include <cstring>
#include <stdexcept>

#include <linux/input-event-codes.h>
#include <sys/mman.h>
#include <unistd.h>

#include <fake-input-client.h>
#include <virtual-keyboard-unstable-v1-client.h>
#include <wlr-virtual-pointer-unstable-v1-client.h>

namespace Harness {

namespace {

constexpr uint32_t fakeKeys = 4; ///< The version since which there are some.
constexpr int wheelStep = 15;

/// Written out by the compositor's own library.
constexpr char keymap[] = R"keys(xkb_keymap {
    xkb_keycodes { include "evdev" };
    xkb_types { include "complete" };
    xkb_compat { include "complete" };
    xkb_symbols { include "pc+us+inet(evdev)" };
};)keys";

template <class Global>
void bind(Global*& global, wl_registry* registry, uint32_t number, const char* name,
          const wl_interface& wanted, uint32_t version) {
    if (std::strcmp(name, wanted.name) == 0)
        global = static_cast<Global*>(wl_registry_bind(registry, number, &wanted, version));
}

void add(void* data, wl_registry* registry, uint32_t number, const char* name, uint32_t) {
    auto& devices = *static_cast<WaylandInput::Devices*>(data);
    bind(devices.fake, registry, number, name, org_kde_kwin_fake_input_interface, fakeKeys);
    bind(devices.seat, registry, number, name, wl_seat_interface, 1);
    bind(devices.pointers, registry, number, name, zwlr_virtual_pointer_manager_v1_interface, 1);
    bind(devices.keyboards, registry, number, name, zwp_virtual_keyboard_manager_v1_interface, 1);
}

constexpr wl_registry_listener listener = {add, [](void*, wl_registry*, uint32_t) {}};

uint32_t now() {
    const auto time = Clock::now().time_since_epoch();
    return static_cast<uint32_t>(time / std::chrono::milliseconds(1));
}

} // namespace

WaylandInput::WaylandInput(const std::string& socket, const Area& bounds)
    : m_display(wl_display_connect(socket.c_str())), m_bounds(bounds) {
    if (!m_display) throw std::runtime_error("no compositor at " + socket);
    wl_registry_add_listener(wl_display_get_registry(m_display), &listener, &m_devices);
    settle();
    if (m_devices.fake) {
        org_kde_kwin_fake_input_authenticate(m_devices.fake, "tests", "tests");
    } else if (m_devices.pointers && m_devices.keyboards) {
        m_pointer = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(m_devices.pointers,
                                                                           m_devices.seat);
        m_keyboard = zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(m_devices.keyboards,
                                                                             m_devices.seat);
        const int file = memfd_create("keymap", MFD_CLOEXEC);
        if (write(file, keymap, sizeof keymap) != sizeof keymap)
            throw std::runtime_error("no keymap");
        zwp_virtual_keyboard_v1_keymap(m_keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
                                       sizeof keymap);
        close(file);
    } else {
        throw std::runtime_error("the compositor takes no input from programs");
    }
    settle();
}

WaylandInput::~WaylandInput() { wl_display_disconnect(m_display); }

void WaylandInput::settle() const {
    if (wl_display_roundtrip(m_display) < 0) throw std::runtime_error("the compositor is gone");
}

void WaylandInput::fake(uint8_t type, uint8_t detail, int x, int y) const {
    const bool down = type == XCB_KEY_PRESS || type == XCB_BUTTON_PRESS;
    if (type == XCB_MOTION_NOTIFY) {
        jump(x, y - 1); // Xwayland only goes by the second motion within a window.
        jump(x, y);
        m_pointerAt = {x, y};
    } else if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) {
        const uint32_t key = detail - 8U; // X counts the kernel's numbers from eight.
        m_keyboard ? zwp_virtual_keyboard_v1_key(m_keyboard, now(), key, down)
                   : org_kde_kwin_fake_input_keyboard_key(m_devices.fake, key, down);
    } else if (detail <= 3) {
        const uint32_t button = detail == 1 ? BTN_LEFT : detail == 2 ? BTN_MIDDLE : BTN_RIGHT;
        m_pointer ? zwlr_virtual_pointer_v1_button(m_pointer, now(), button, down)
                  : org_kde_kwin_fake_input_button(m_devices.fake, button, down);
    } else if (down) {
        wheel(detail == 4 ? -1 : 1);
    }
    if (m_pointer) zwlr_virtual_pointer_v1_frame(m_pointer);
    settle();
}

void WaylandInput::jump(int x, int y) const {
    if (m_pointer)
        zwlr_virtual_pointer_v1_motion_absolute(
            m_pointer, now(), static_cast<uint32_t>(x), static_cast<uint32_t>(y),
            static_cast<uint32_t>(m_bounds.width), static_cast<uint32_t>(m_bounds.height));
    else
        org_kde_kwin_fake_input_pointer_motion_absolute(m_devices.fake, wl_fixed_from_int(x),
                                                        wl_fixed_from_int(y));
}

void WaylandInput::tap(const Area& area) const {
    constexpr uint32_t finger = 0;
    const Point at = area.middle();
    org_kde_kwin_fake_input_touch_down(m_devices.fake, finger, wl_fixed_from_int(at.x),
                                       wl_fixed_from_int(at.y));
    org_kde_kwin_fake_input_touch_up(m_devices.fake, finger);
    org_kde_kwin_fake_input_touch_frame(m_devices.fake);
    settle();
}

void WaylandInput::wheel(int steps) const {
    const wl_fixed_t way = wl_fixed_from_int(steps * wheelStep);
    if (m_pointer) {
        zwlr_virtual_pointer_v1_axis_source(m_pointer, WL_POINTER_AXIS_SOURCE_WHEEL);
        zwlr_virtual_pointer_v1_axis_discrete(m_pointer, now(), WL_POINTER_AXIS_VERTICAL_SCROLL,
                                              way, steps);
    } else {
        org_kde_kwin_fake_input_axis(m_devices.fake, WL_POINTER_AXIS_VERTICAL_SCROLL, way);
    }
}

} // namespace Harness
