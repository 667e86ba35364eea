#pragma once

#include "Carbon/Carbon.h"

/// A hot key's event: the one kind there is.
struct OpaqueEventRef {
    EventHotKeyID hotKey;
};
