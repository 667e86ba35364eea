#pragma once

#include <QString>

#include <memory>
#include <optional>

#include <xkbcommon/xkbcommon.h>

namespace WindowServer::Wayland {

/// What the keyboard's keys mean to the toolkit.
class Keymap {
public:
    /// Takes the description that the compositor hands over, and closes the file.
    void load(int file, uint32_t length);
    void update(uint32_t depressed, uint32_t latched, uint32_t locked, uint32_t layout);

    /// By the kernel's number of the key.
    int keyOf(uint32_t code) const;
    QString textOf(uint32_t code) const;
    bool repeats(uint32_t code) const;
    Qt::KeyboardModifiers modifiers() const;
    /// What the key is called, by the toolkit, in the first layout. Nothing where none is known.
    std::optional<int> plainKeyOf(uint32_t code) const;

private:
    struct Unref {
        void operator()(xkb_context* object) const { xkb_context_unref(object); }
        void operator()(xkb_keymap* object) const { xkb_keymap_unref(object); }
        void operator()(xkb_state* object) const { xkb_state_unref(object); }
    };

    std::unique_ptr<xkb_context, Unref> m_context;
    std::unique_ptr<xkb_keymap, Unref> m_map;
    std::unique_ptr<xkb_state, Unref> m_state;
};

} // namespace WindowServer::Wayland
