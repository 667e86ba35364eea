#pragma once

#include "Carbon/Carbon.h"

#include <memory>
#include <vector>

/// A hot key's event: the one kind there is.
struct OpaqueEventRef {
    EventHotKeyID hotKey;
};

struct OpaqueEventHandlerRef {
    EventHandlerUPP handler;
    void* userData;
};

struct OpaqueEventTargetRef {
    std::vector<std::unique_ptr<OpaqueEventHandlerRef>> handlers; ///< In the order of installation.
};

/// Asks the target's handlers, the last one first, until one has dealt with the event.
void SendEventToEventTarget(EventRef event, EventTargetRef target);
