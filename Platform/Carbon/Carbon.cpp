#include "Carbon/Carbon.h"

#include "WindowServer/Session.h"

#include <algorithm>
#include <cstring>

using WindowServer::KeyChord;
using WindowServer::Session;

/// A hot key's event: the one kind there is.
struct OpaqueEventRef {
    EventHotKeyID hotKey;
};

struct OpaqueEventHandlerRef {
    EventHandlerUPP handler;
    void* userData;
};

struct OpaqueEventTargetRef {
    OpaqueEventHandlerRef handler;
};

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

EventTargetRef GetApplicationEventTarget() {
    static OpaqueEventTargetRef application;
    return &application;
}

OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount,
                             const EventTypeSpec*, void* userData, EventHandlerRef* outRef) {
    if (!target || !handler) return paramErr;
    target->handler = {handler, userData};
    if (outRef) *outRef = &target->handler;
    return noErr;
}

OSStatus GetEventParameter(EventRef event, EventParamName name, EventParamType desiredType,
                           EventParamType* outActualType, ByteCount bufferSize,
                           ByteCount* outActualSize, void* outData) {
    if (!event || !outData) return paramErr;
    if (name != kEventParamDirectObject || desiredType != typeEventHotKeyID)
        return eventParameterNotFoundErr;
    std::memcpy(outData, &event->hotKey, std::min<ByteCount>(bufferSize, sizeof event->hotKey));
    if (outActualType) *outActualType = typeEventHotKeyID;
    if (outActualSize) *outActualSize = sizeof event->hotKey;
    return noErr;
}

OSStatus RegisterEventHotKey(UInt32 hotKeyCode, UInt32 hotKeyModifiers, EventHotKeyID hotKeyID,
                             EventTargetRef target, OptionBits, EventHotKeyRef* outRef) {
    if (!target || !outRef) return paramErr;
    const auto chord = chordOf(hotKeyCode, hotKeyModifiers);
    if (!chord) return eventHotKeyInvalidErr;
    static OpaqueEventHotKeyRef hotKey; // There is one key to take.
    auto& key = Session::current().key();
    const bool isTaken = key.take(*chord);
    if (!isTaken && hotKey.target) return eventHotKeyExistsErr;
    hotKey = {hotKeyID, target};
    key.onPressed = [] { // The session may have other ways to come by a press.
        OpaqueEventRef event{hotKey.id};
        const auto& [handler, userData] = hotKey.target->handler;
        if (handler) handler(nullptr, &event, userData);
    };
    if (!isTaken) return eventHotKeyExistsErr;
    *outRef = &hotKey;
    return noErr;
}
