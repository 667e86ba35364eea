#pragma once

#include "Carbon/MacTypes.h"

using EventRef = struct OpaqueEventRef*;
using EventTargetRef = struct OpaqueEventTargetRef*;
using EventHandlerRef = struct OpaqueEventHandlerRef*;
using EventHandlerCallRef = struct OpaqueEventHandlerCallRef*;

using EventParamName = OSType;
using EventParamType = OSType;

enum : OSStatus {
    eventHandlerAlreadyInstalledErr = -9866,
    eventParameterNotFoundErr = -9870,
    eventNotHandledErr = -9874,
};

struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
};

/// Answers noErr where it has dealt with the event, eventNotHandledErr where the handler that was
/// installed before it shall have the event too.
using EventHandlerUPP = OSStatus (*)(EventHandlerCallRef nextHandler, EventRef event,
                                     void* userData);

EventTargetRef GetApplicationEventTarget();

/// Calls `handler` on the main thread for each event that comes to the target; the list can name
/// hot keys alone, of which all events are. The handlers installed last are asked first. A handler
/// can be installed once.
OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount numTypes,
                             const EventTypeSpec* list, void* userData, EventHandlerRef* outRef);

/// Copies a parameter of the event into `outData`. `outActualType` and `outActualSize` may be null.
/// eventParameterNotFoundErr where the event has no such parameter of that type.
OSStatus GetEventParameter(EventRef event, EventParamName name, EventParamType desiredType,
                           EventParamType* outActualType, ByteCount bufferSize,
                           ByteCount* outActualSize, void* outData);
