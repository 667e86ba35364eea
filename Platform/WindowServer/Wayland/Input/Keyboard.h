#pragma once

#include "WindowServer/Wayland/Input/KeyboardHolder.h"
#include "WindowServer/Wayland/Input/Keymap.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <memory>

namespace WindowServer::Wayland {

class StagedWindows;
class Stages;

/// Fetches the keyboard for the staged windows that want it, gives it back, and hands them the keys
/// meanwhile.
class Keyboard {
public:
    Keyboard(const Connection& connection, const Stages& stages, StagedWindows& windows);

    void connectTo(wl_seat* seat);
    const Keymap& keymap() const { return m_keymap; }

    /// To be called at a turn's end.
    void follow();

private:
    // What the compositor tells. Serials come first.
    void load(uint32_t format, int file, uint32_t length);
    void enter(uint32_t, wl_surface* surface, wl_array* keys);
    void leave(uint32_t, wl_surface* surface);
    void key(uint32_t, uint32_t time, uint32_t code, uint32_t state);
    void update(uint32_t, uint32_t depressed, uint32_t latched, uint32_t locked, uint32_t layout);
    void setRepeat(int perSecond, int delay);

    void send(QEvent::Type type, uint32_t code, bool isRepeated);
    bool hasKeys() const { return m_holder && m_focus == m_holder->surface(); }
    bool isWanted() const;
    QWidget* popup() const;
    void lose();
    void activate();
    void deactivate();

    const Connection& m_connection;
    const Stages& m_stages;
    StagedWindows& m_windows;
    Owned<wl_keyboard> m_keyboard;
    Keymap m_keymap;
    std::unique_ptr<KeyboardHolder> m_holder;
    bool m_hadKeys = false;              ///< At the end of the last turn.
    const wl_surface* m_focus = nullptr; ///< That of ours that has the keyboard.
    QTimer m_repeat;
    uint32_t m_repeated = 0;
    std::chrono::milliseconds m_repeatDelay{600};
    std::chrono::milliseconds m_repeatPause{40};
};

} // namespace WindowServer::Wayland
