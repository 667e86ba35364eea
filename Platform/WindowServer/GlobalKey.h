#pragma once

#include <functional>
#include <string>

namespace WindowServer {

/// Keymaps and the X server count keys from here, the kernel from 0.
constexpr int firstKeycode = 8;

/// A key, known by its place on the keyboard whatever the layout makes of it, pressed while the
/// modifiers that are named are held and no others.
struct KeyChord {
    std::string place;  ///< As keyboard descriptions name it: "AB06", in the lowest row of letters.
    int kernelCode = 0; ///< The kernel's number for it, for servers that know no places.
    bool control = false;
    bool alt = false;
    bool super = false;
};

/// The one chord that reaches the program whichever window has the keyboard.
class GlobalKey {
public:
    virtual ~GlobalKey() = default;

    /// Takes the chord from all other programs for as long as the process runs. False where another
    /// one has it already, the keyboard has no such key, or this has a chord.
    virtual bool take(const KeyChord& chord) = 0;

    /// Called once at each press, however long the key is kept down.
    std::function<void()> onPressed;
};

} // namespace WindowServer
