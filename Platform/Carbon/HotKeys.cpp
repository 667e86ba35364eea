#include "Carbon/Carbon+Private.h"
#include "WindowServer/Session.h"

#include <optional>

using WindowServer::KeyChord;
using WindowServer::Session;

struct OpaqueEventHotKeyRef {
    EventHotKeyID id;
    EventTargetRef target;
};

namespace {

std::optional<KeyChord> chordOf(UInt32 code, UInt32 modifiers) {
    if (code != kVK_ANSI_N) return std::nullopt;
    return KeyChord{.place = "AB06",
                    .kernelCode = 49,
                    .control = (modifiers & controlKey) != 0,
                    .alt = (modifiers & optionKey) != 0,
                    .super = (modifiers & cmdKey) != 0};
}

} // namespace

OSStatus RegisterEventHotKey(UInt32 hotKeyCode, UInt32 hotKeyModifiers, EventHotKeyID hotKeyID,
                             EventTargetRef target, OptionBits, EventHotKeyRef* outRef) {
    if (!target || !outRef) return paramErr;
    const auto chord = chordOf(hotKeyCode, hotKeyModifiers);
    if (!chord) return eventHotKeyInvalidErr;
    if (!Session::current().key().take(*chord)) return eventHotKeyExistsErr;

    static OpaqueEventHotKeyRef hotKey; // There is one key to take.
    hotKey = {hotKeyID, target};
    Session::current().key().onPressed = [] {
        OpaqueEventRef event{hotKey.id};
        SendEventToEventTarget(&event, hotKey.target);
    };
    *outRef = &hotKey;
    return noErr;
}
