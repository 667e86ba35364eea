#pragma once

#include "Carbon/CarbonEventsCore.h"

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
/// lock keys are no matter. A key that is kept down is pressed once.
///
/// The key is taken by its place: its code is that of the place on an ANSI keyboard. An older
/// instance of the program that is about to quit hands the key over as it goes.
///
/// eventHotKeyExistsErr where another program has the key, or this one has a hot key already;
/// eventHotKeyInvalidErr for a key that is not known here.
OSStatus RegisterEventHotKey(UInt32 hotKeyCode, UInt32 hotKeyModifiers, EventHotKeyID hotKeyID,
                             EventTargetRef target, OptionBits options, EventHotKeyRef* outRef);
