#pragma once

#include "WindowServer/GlobalKey.h"
#include "WindowServer/X11/Desktop/Keymap.h"

#include <QAbstractNativeEventFilter>

#include <optional>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// Holds a chord for this program alone, wherever the layout moves its keys.
///
/// The instance that holds it owns a selection. One that finds the chord held by another instance
/// waits a moment for it: it has been asked to quit.
class KeyGrab : public GlobalKey, private QAbstractNativeEventFilter {
public:
    explicit KeyGrab(Connection& connection) : m_connection(connection) {}

    bool take(const KeyChord& chord) override;

    void handle(const xcb_generic_event_t& event);

private:
    bool nativeEventFilter(const QByteArray& type, void* event, qintptr*) override;

    void listenToKeyboard();
    bool inherit();
    std::optional<xcb_window_t> hold();
    bool grab() const;
    void letGo() const;
    void leave();
    void announce();
    xcb_atom_t selection() const;
    bool handleKey(const xcb_generic_event_t& event);
    bool isChange(const xcb_generic_event_t& event) const;
    void followKeymap();

    Connection& m_connection;
    std::optional<KeyChord> m_chord;
    ChordCode m_code;
    xcb_keycode_t m_down = 0;                ///< The key, from its press to its release.
    xcb_window_t m_window = XCB_WINDOW_NONE; ///< Owns the selection.
    uint8_t m_xkbEvent = 0;                  ///< 0 where the server lacks the extension.
};

} // namespace WindowServer
