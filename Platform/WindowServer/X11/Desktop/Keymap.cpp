#include "WindowServer/X11/Desktop/Keymap.h"

#include "WindowServer/X11/Connection.h"
#include "WindowServer/X11/Desktop/Xkb.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace WindowServer {

namespace {

// Keysyms, as the protocol numbers them.
constexpr xcb_keysym_t numLock = 0xff7f;
constexpr xcb_keysym_t scrollLock = 0xff14;
constexpr xcb_keysym_t altLeft = 0xffe9;
constexpr xcb_keysym_t altRight = 0xffea;
constexpr xcb_keysym_t superLeft = 0xffeb;
constexpr xcb_keysym_t superRight = 0xffec;

constexpr int modifierCount = 8;
constexpr uint16_t allModifiers = 0xff;

/// The key at a place, by the names that the server's keyboard description gives to places.
xcb_keycode_t keyAt(const std::string& place, const Connection& connection) {
    const auto reply = connection.reply(xcb_xkb_get_names_reply,
                                        xcb_xkb_get_names(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD,
                                                          XCB_XKB_NAME_DETAIL_KEY_NAMES));
    if (!reply) return 0;
    xcb_xkb_get_names_value_list_t lists = {};
    xcb_xkb_get_names_value_list_unpack(xcb_xkb_get_names_value_list(reply.get()), reply->nTypes,
                                        reply->indicators, reply->virtualMods, reply->groupNames,
                                        reply->nKeys, reply->nKeyAliases, reply->nRadioGroups,
                                        reply->which, &lists);
    for (int i = 0; i < reply->nKeys; ++i) {
        const std::string_view name(lists.keyNames[i].name, sizeof lists.keyNames[i].name);
        if (name.substr(0, name.find('\0')) == place)
            return static_cast<xcb_keycode_t>(reply->firstKey + i);
    }
    return 0;
}

/// The modifiers that are locked now. One stays locked for good where its key is remapped.
uint16_t locked(const Connection& connection) {
    const auto state = connection.reply(
        xcb_xkb_get_state_reply, xcb_xkb_get_state(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD));
    return state ? state->lockedMods : 0;
}

/// The keyboard's modifier map and the symbols of its keys.
class Modifiers {
public:
    explicit Modifiers(const Connection& connection)
        : m_firstKey(xcb_get_setup(connection.xcb())->min_keycode) {
        const auto lastKey = xcb_get_setup(connection.xcb())->max_keycode;
        const auto modifiers = xcb_get_modifier_mapping(connection.xcb());
        const auto symbols = xcb_get_keyboard_mapping(
            connection.xcb(), m_firstKey, static_cast<uint8_t>(lastKey - m_firstKey + 1));
        m_modifiers = connection.reply(xcb_get_modifier_mapping_reply, modifiers);
        m_symbols = connection.reply(xcb_get_keyboard_mapping_reply, symbols);
    }

    /// The modifiers that keys with one of the symbols are.
    uint16_t with(std::initializer_list<xcb_keysym_t> symbols) const {
        uint16_t masks = 0;
        if (!m_modifiers || !m_symbols) return masks;
        const int keys = m_modifiers->keycodes_per_modifier;
        const auto* key = xcb_get_modifier_mapping_keycodes(m_modifiers.get());
        for (int modifier = 0; modifier < modifierCount; ++modifier, key += keys)
            if (std::any_of(key, key + keys, [&](auto each) { return bears(each, symbols); }))
                masks |= static_cast<uint16_t>(1 << modifier);
        return masks;
    }

private:
    bool bears(xcb_keycode_t key, std::initializer_list<xcb_keysym_t> wanted) const {
        const size_t width = m_symbols->keysyms_per_keycode;
        const std::span all(
            xcb_get_keyboard_mapping_keysyms(m_symbols.get()),
            static_cast<size_t>(xcb_get_keyboard_mapping_keysyms_length(m_symbols.get())));
        const size_t start = (key - m_firstKey) * width;
        if (key < m_firstKey || start + width > all.size()) return false; // Rows are padded with 0.
        const auto symbols = all.subspan(start, width);
        return std::ranges::find_first_of(symbols, wanted) != symbols.end();
    }

    const xcb_keycode_t m_firstKey;
    Owned<xcb_get_modifier_mapping_reply_t> m_modifiers;
    Owned<xcb_get_keyboard_mapping_reply_t> m_symbols;
};

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
    ChordCode code;
    code.key = hasXkb ? keyAt(chord.place, connection)
                      : static_cast<xcb_keycode_t>(chord.kernelCode + firstKeycode);
    const Modifiers modifiers(connection);
    if (chord.control) code.modifiers |= XCB_MOD_MASK_CONTROL;
    if (chord.alt) code.modifiers |= lowestOr(modifiers.with({altLeft, altRight}), XCB_MOD_MASK_1);
    if (chord.super)
        code.modifiers |= lowestOr(modifiers.with({superLeft, superRight}), XCB_MOD_MASK_4);
    code.locks = XCB_MOD_MASK_LOCK | modifiers.with({numLock, scrollLock});
    if (hasXkb) code.locks |= locked(connection);
    code.locks &= static_cast<uint16_t>(~code.modifiers);
    return code;
}

} // namespace WindowServer
