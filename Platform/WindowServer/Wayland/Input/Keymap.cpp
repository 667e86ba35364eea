#include "WindowServer/Wayland/Input/Keymap.h"

#include "WindowServer/GlobalKey.h"

#include <QKeySequence>

#include <map>
#include <utility>

#include <sys/mman.h>
#include <unistd.h>

namespace WindowServer::Wayland {

namespace {

/// What types nothing is mostly called the same by keymaps and by the toolkit.
int keyFrom(xkb_keysym_t symbol) {
    static const std::map<xkb_keysym_t, int> others = {{XKB_KEY_ISO_Left_Tab, Qt::Key_Backtab},
                                                       {XKB_KEY_KP_Enter, Qt::Key_Enter},
                                                       {XKB_KEY_Prior, Qt::Key_PageUp},
                                                       {XKB_KEY_Next, Qt::Key_PageDown}};
    if (const auto found = others.find(symbol); found != others.end()) return found->second;
    const uint32_t letter = xkb_keysym_to_utf32(symbol);
    if (QChar::isPrint(letter)) return static_cast<int>(QChar::toUpper(letter));
    char name[64] = {};
    xkb_keysym_get_name(symbol, name, sizeof name);
    return QKeySequence(QString::fromLatin1(name))[0].key();
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
    for (const auto& [name, modifier] : {std::pair{XKB_MOD_NAME_SHIFT, Qt::ShiftModifier},
                                         {XKB_MOD_NAME_CTRL, Qt::ControlModifier},
                                         {XKB_MOD_NAME_ALT, Qt::AltModifier},
                                         {XKB_MOD_NAME_LOGO, Qt::MetaModifier}})
        if (m_state &&
            xkb_state_mod_name_is_active(m_state.get(), name, XKB_STATE_MODS_EFFECTIVE) > 0)
            modifiers |= modifier;
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
