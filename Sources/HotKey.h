// The one keyboard shortcut, ⌃⌥⌘N: from any application it turns the blur on or off.
#pragma once

#include "Carbon/Carbon.h"

#include <string>

class HotKey {
public:
    /// The combination as it is shown to the user.
    inline static const std::string keys = "⌃⌥⌘N";

    static HotKey& shared();

    /// Takes the combination, once. Where another program has it, nothing more is done.
    void register_(); // "register" is a word of the language.

    /// Whether the combination is ours.
    bool registered() const { return ref != nullptr; }

private:
    EventHandlerRef handler = nullptr;
    EventHotKeyRef ref = nullptr;
};

/// Toggles the cover at the hot key's event; any other is left to other handlers.
OSStatus hotKeyPressed(EventHandlerCallRef, EventRef event, void*);
