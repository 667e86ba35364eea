#include "WindowServer/X11/Desktop/Keymap.h"

#include "WindowServer/X11/Connection.h"

#include <algorithm>

#include <xkbcommon/xkbcommon-x11.h>

namespace WindowServer {

namespace {

constexpr uint16_t allModifiers = 0xff;

template <class Object> using Held = std::unique_ptr<Object, void (*)(Object*)>;

/// What pressing keys with one of the symbols makes of the modifiers.
uint16_t modifiersOf(xkb_keymap* keymap, std::initializer_list<xkb_keysym_t> symbols,
                     xkb_state_component kind) {
    xkb_mod_mask_t all = 0;
    for (auto key = xkb_keymap_min_keycode(keymap); key <= xkb_keymap_max_keycode(keymap); ++key) {
        const Held<xkb_state> state(xkb_state_new(keymap), xkb_state_unref);
        const xkb_keysym_t symbol = xkb_state_key_get_one_sym(state.get(), key);
        if (std::ranges::find(symbols, symbol) == symbols.end()) continue;
        xkb_state_update_key(state.get(), key, XKB_KEY_DOWN);
        all |= xkb_state_serialize_mods(state.get(), kind);
    }
    return all & allModifiers;
}

uint16_t lowestOr(uint16_t masks, uint16_t usual) {
    return masks == 0 ? usual : static_cast<uint16_t>(masks & -masks);
}

} // namespace

std::vector<uint16_t> ChordCode::states() const {
    std::vector<uint16_t> all;
    for (uint16_t on = locks; on != 0; on = static_cast<uint16_t>((on - 1) & locks))
        all.push_back(modifiers | on);
    all.push_back(modifiers);
    return all;
}

bool ChordCode::matches(uint16_t state) const {
    return (state & allModifiers & ~locks) == modifiers;
}

ChordCode codeOf(const KeyChord& chord, const Connection& connection, bool hasXkb) {
    xcb_connection_t* const xcb = connection.xcb();
    ChordCode code{.key = static_cast<xcb_keycode_t>(chord.kernelCode + firstKeycode),
                   .locks = XCB_MOD_MASK_LOCK};
    uint16_t alt = 0;
    uint16_t super = 0;
    const Held<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES),
                                    xkb_context_unref);
    const int32_t keyboard = hasXkb ? xkb_x11_get_core_keyboard_device_id(xcb) : -1;
    const Held<xkb_keymap> keymap(keyboard < 0
                                      ? nullptr
                                      : xkb_x11_keymap_new_from_device(context.get(), xcb, keyboard,
                                                                       XKB_KEYMAP_COMPILE_NO_FLAGS),
                                  xkb_keymap_unref);
    if (keymap) {
        const auto key = xkb_keymap_key_by_name(keymap.get(), chord.place.c_str());
        code.key = key == XKB_KEYCODE_INVALID ? 0 : static_cast<xcb_keycode_t>(key);
        alt = modifiersOf(keymap.get(), {XKB_KEY_Alt_L, XKB_KEY_Alt_R}, XKB_STATE_MODS_DEPRESSED);
        super =
            modifiersOf(keymap.get(), {XKB_KEY_Super_L, XKB_KEY_Super_R}, XKB_STATE_MODS_DEPRESSED);
        code.locks |= modifiersOf(keymap.get(), {XKB_KEY_Num_Lock, XKB_KEY_Scroll_Lock},
                                  XKB_STATE_MODS_LOCKED);
        // One stays locked for good where its key is remapped.
        const Held<xkb_state> now(xkb_x11_state_new_from_device(keymap.get(), xcb, keyboard),
                                  xkb_state_unref);
        if (now)
            code.locks |= xkb_state_serialize_mods(now.get(), XKB_STATE_MODS_LOCKED) & allModifiers;
    }
    if (chord.control) code.modifiers |= XCB_MOD_MASK_CONTROL;
    if (chord.alt) code.modifiers |= lowestOr(alt, XCB_MOD_MASK_1);
    if (chord.super) code.modifiers |= lowestOr(super, XCB_MOD_MASK_4);
    code.locks &= static_cast<uint16_t>(~code.modifiers);
    return code;
}

} // namespace WindowServer
