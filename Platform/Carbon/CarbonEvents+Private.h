#pragma once

#include "Carbon/CarbonEvents.h"

/// A hot key's event: the one kind there is.
struct OpaqueEventRef {
    EventTypeSpec type;
    EventHotKeyID hotKey;
};

/// Asks the handlers of the target's that want the event, the last one first, until one has dealt
/// with it. eventNotHandledErr where none has.
OSStatus SendEventToEventTarget(EventRef event, EventTargetRef target);
