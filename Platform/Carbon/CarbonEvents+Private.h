#pragma once

#include "Carbon/CarbonEvents.h"

#include <memory>
#include <vector>

/// A hot key's event: the one kind there is.
struct OpaqueEventRef {
    EventTypeSpec type;
    EventHotKeyID hotKey;
};

struct OpaqueEventHandlerRef {
    EventHandlerUPP handler;
    std::vector<EventTypeSpec> types;
    void* userData;

    bool wants(const EventTypeSpec& type) const;
};

struct OpaqueEventTargetRef {
    std::vector<std::unique_ptr<OpaqueEventHandlerRef>> handlers; ///< In the order of installation.
};

/// Asks the handlers of the target's that want the event, the last one first, until one has dealt
/// with it. eventNotHandledErr where none has.
OSStatus SendEventToEventTarget(EventRef event, EventTargetRef target);
