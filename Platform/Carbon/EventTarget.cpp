#include "Carbon/Carbon+Private.h"

#include <algorithm>
#include <cstring>

EventTargetRef GetApplicationEventTarget() {
    static OpaqueEventTargetRef application;
    return &application;
}

OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount,
                             const EventTypeSpec*, void* userData, EventHandlerRef* outRef) {
    if (!target || !handler) return paramErr;
    for (const auto& installed : target->handlers)
        if (installed->handler == handler) return eventHandlerAlreadyInstalledErr;
    target->handlers.push_back(
        std::make_unique<OpaqueEventHandlerRef>(OpaqueEventHandlerRef{handler, userData}));
    if (outRef) *outRef = target->handlers.back().get();
    return noErr;
}

void SendEventToEventTarget(EventRef event, EventTargetRef target) {
    for (auto i = target->handlers.size(); i > 0; --i) { // A handler may install another.
        const OpaqueEventHandlerRef& each = *target->handlers[i - 1];
        if (each.handler(nullptr, event, each.userData) != eventNotHandledErr) return;
    }
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
