#include "Carbon/CarbonEvents+Private.h"

#include <algorithm>
#include <cstring>

bool OpaqueEventHandlerRef::wants(const EventTypeSpec& type) const {
    return std::ranges::any_of(types, [&](const EventTypeSpec& each) {
        return each.eventClass == type.eventClass && each.eventKind == type.eventKind;
    });
}

EventTargetRef GetApplicationEventTarget() {
    static OpaqueEventTargetRef application;
    return &application;
}

OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount numTypes,
                             const EventTypeSpec* list, void* userData, EventHandlerRef* outRef) {
    if (!target || !handler) return paramErr;
    for (const auto& installed : target->handlers)
        if (installed->handler == handler) return eventHandlerAlreadyInstalledErr;
    target->handlers.push_back(std::make_unique<OpaqueEventHandlerRef>(
        OpaqueEventHandlerRef{handler, {list, list + numTypes}, userData}));
    if (outRef) *outRef = target->handlers.back().get();
    return noErr;
}

OSStatus SendEventToEventTarget(EventRef event, EventTargetRef target) {
    for (auto i = target->handlers.size(); i > 0; --i) { // A handler may install another.
        const OpaqueEventHandlerRef& each = *target->handlers[i - 1];
        if (!each.wants(event->type)) continue;
        const OSStatus status = each.handler(nullptr, event, each.userData);
        if (status != eventNotHandledErr) return status;
    }
    return eventNotHandledErr;
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
