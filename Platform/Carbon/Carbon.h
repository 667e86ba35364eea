// Events of the keyboard that reach the program wherever it stands: its hot key.
#pragma once

#include <cstdint>

using UInt32 = uint32_t;
using FourCharCode = UInt32; ///< Four characters, the first in the most significant byte.
using OSType = FourCharCode;
using OSStatus = int32_t;
using OptionBits = UInt32;
using ItemCount = unsigned long;
using ByteCount = unsigned long;

enum : OSStatus {
    noErr = 0,
    paramErr = -50,
};

using EventRef = struct OpaqueEventRef*;
using EventTargetRef = struct OpaqueEventTargetRef*;
using EventHandlerRef = struct OpaqueEventHandlerRef*;
using EventHandlerCallRef = struct OpaqueEventHandlerCallRef*;

using EventParamName = OSType;
using EventParamType = OSType;

enum : OSStatus {
    eventParameterNotFoundErr = -9870,
    eventNotHandledErr = -9874,
};

struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
};

/// Answers noErr where it has dealt with the event, else eventNotHandledErr.
using EventHandlerUPP = OSStatus (*)(EventHandlerCallRef nextHandler, EventRef event,
                                     void* userData);

EventTargetRef GetApplicationEventTarget();

/// Calls `handler` on the main thread for each event that comes to the target; the list can name
/// hot keys alone, of which all events are. A target has one handler, the last one installed.
OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler, ItemCount numTypes,
                             const EventTypeSpec* list, void* userData, EventHandlerRef* outRef);

/// Copies a parameter of the event into `outData`. `outActualType` and `outActualSize` may be null.
/// eventParameterNotFoundErr where the event has no such parameter of that type.
OSStatus GetEventParameter(EventRef event, EventParamName name, EventParamType desiredType,
                           EventParamType* outActualType, ByteCount bufferSize,
                           ByteCount* outActualSize, void* outData);

enum { kVK_ANSI_N = 0x2D };

/// The modifiers of a hot key. Elsewhere the command key is called Super, the option key Alt.
enum {
    cmdKey = 1 << 8,
    optionKey = 1 << 11,
    controlKey = 1 << 12,
};

enum : OSType { kEventClassKeyboard = 'keyb' };
enum : UInt32 { kEventHotKeyPressed = 5 };
enum : EventParamName { kEventParamDirectObject = '----' };
enum : EventParamType { typeEventHotKeyID = 'hkid' };

enum : OSStatus {
    eventHotKeyExistsErr = -9878,
    eventHotKeyInvalidErr = -9879,
};

using EventHotKeyRef = struct OpaqueEventHotKeyRef*;

/// What the registrant calls its hot key.
struct EventHotKeyID {
    OSType signature;
    UInt32 id;
};

/// Takes a key from all other programs for as long as this one runs, and sends the target an event
/// of the kind kEventHotKeyPressed each time it is pressed while just these modifiers are held. The
/// lock keys are no matter. A key that is kept down is pressed once. Its code is that of its place
/// on an ANSI keyboard. An older instance that is about to quit hands the key over as it goes.
///
/// eventHotKeyExistsErr where another program has the key, or this one has a hot key already;
/// eventHotKeyInvalidErr for a key that is not known here.
OSStatus RegisterEventHotKey(UInt32 hotKeyCode, UInt32 hotKeyModifiers, EventHotKeyID hotKeyID,
                             EventTargetRef target, OptionBits options, EventHotKeyRef* outRef);
