#pragma once

#include "WindowServer/GlobalKey.h"

#include <cstdint>
#include <vector>

#include <xcb/xcb.h>

namespace WindowServer {

class Connection;

/// What the keyboard, as it is laid out now, makes of a chord.
struct ChordCode {
    xcb_keycode_t key = 0; ///< 0 where the keyboard has no such key.
    uint16_t modifiers = 0;
    uint16_t locks = 0; ///< The modifiers of the lock keys, which may be on or off.

    /// Every state of the modifiers in which the chord counts.
    std::vector<uint16_t> states() const;
    /// Whether the chord counts in this state of modifiers, buttons and group.
    bool matches(uint16_t state) const;

    bool operator==(const ChordCode&) const = default;
};

/// Reads the server's keyboard description. `hasXkb` tells whether it has one beside the core one.
ChordCode codeOf(const KeyChord& chord, const Connection& connection, bool hasXkb);

} // namespace WindowServer
