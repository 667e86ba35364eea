#include "WindowServer/Wayland/Keymap.h"

#include "WindowServer/GlobalKey.h"

#include <QChar>

#include <map>

#include <sys/mman.h>
#include <unistd.h>

namespace WindowServer::Wayland {

namespace {

int keyFrom(xkb_keysym_t symbol) {
    static const std::map<xkb_keysym_t, int> named = {
        {XKB_KEY_Tab, Qt::Key_Tab},
        {XKB_KEY_ISO_Left_Tab, Qt::Key_Backtab},
        {XKB_KEY_Return, Qt::Key_Return},
        {XKB_KEY_KP_Enter, Qt::Key_Enter},
        {XKB_KEY_Escape, Qt::Key_Escape},
        {XKB_KEY_BackSpace, Qt::Key_Backspace},
        {XKB_KEY_Delete, Qt::Key_Delete},
        {XKB_KEY_Left, Qt::Key_Left},
        {XKB_KEY_Right, Qt::Key_Right},
        {XKB_KEY_Up, Qt::Key_Up},
        {XKB_KEY_Down, Qt::Key_Down},
        {XKB_KEY_Home, Qt::Key_Home},
        {XKB_KEY_End, Qt::Key_End},
        {XKB_KEY_Prior, Qt::Key_PageUp},
        {XKB_KEY_Next, Qt::Key_PageDown},
        {XKB_KEY_Menu, Qt::Key_Menu},
        {XKB_KEY_Shift_L, Qt::Key_Shift},
        {XKB_KEY_Shift_R, Qt::Key_Shift},
        {XKB_KEY_Control_L, Qt::Key_Control},
        {XKB_KEY_Control_R, Qt::Key_Control},
        {XKB_KEY_Alt_L, Qt::Key_Alt},
        {XKB_KEY_Alt_R, Qt::Key_Alt},
        {XKB_KEY_ISO_Level3_Shift, Qt::Key_AltGr},
        {XKB_KEY_Super_L, Qt::Key_Super_L},
        {XKB_KEY_Super_R, Qt::Key_Super_R},
    };
    if (const auto found = named.find(symbol); found != named.end()) return found->second;
    const uint32_t letter = xkb_keysym_to_utf32(symbol);
    return letter < 0x20 ? 0 : static_cast<int>(QChar::toUpper(letter));
}

} // namespace

void Keymap::load(int file, uint32_t length) {
    void* const text = ::mmap(nullptr, length, PROT_READ, MAP_PRIVATE, file, 0);
    ::close(file);
    if (text == MAP_FAILED) return;
    if (!m_context) m_context.reset(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    m_map.reset(xkb_keymap_new_from_string(m_context.get(), static_cast<const char*>(text),
                                           XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
    m_state.reset(m_map ? xkb_state_new(m_map.get()) : nullptr);
    ::munmap(text, length);
}

void Keymap::update(uint32_t depressed, uint32_t latched, uint32_t locked, uint32_t layout) {
    if (m_state) xkb_state_update_mask(m_state.get(), depressed, latched, locked, 0, 0, layout);
}

int Keymap::keyOf(uint32_t code) const {
    return m_state ? keyFrom(xkb_state_key_get_one_sym(m_state.get(), code + firstKeycode)) : 0;
}

QString Keymap::textOf(uint32_t code) const {
    char text[16] = {};
    if (m_state) xkb_state_key_get_utf8(m_state.get(), code + firstKeycode, text, sizeof text);
    return QString::fromUtf8(text);
}

bool Keymap::repeats(uint32_t code) const {
    return m_map && xkb_keymap_key_repeats(m_map.get(), code + firstKeycode);
}

Qt::KeyboardModifiers Keymap::modifiers() const {
    Qt::KeyboardModifiers modifiers;
    const auto add = [&](const char* name, Qt::KeyboardModifier modifier) {
        if (m_state &&
            xkb_state_mod_name_is_active(m_state.get(), name, XKB_STATE_MODS_EFFECTIVE) > 0)
            modifiers |= modifier;
    };
    add(XKB_MOD_NAME_SHIFT, Qt::ShiftModifier);
    add(XKB_MOD_NAME_CTRL, Qt::ControlModifier);
    add(XKB_MOD_NAME_ALT, Qt::AltModifier);
    add(XKB_MOD_NAME_LOGO, Qt::MetaModifier);
    return modifiers;
}

std::optional<int> Keymap::plainKeyOf(uint32_t code) const {
    const xkb_keysym_t* symbols = nullptr;
    if (!m_map ||
        xkb_keymap_key_get_syms_by_level(m_map.get(), code + firstKeycode, 0, 0, &symbols) != 1)
        return std::nullopt;
    return keyFrom(symbols[0]);
}

} // namespace WindowServer::Wayland
