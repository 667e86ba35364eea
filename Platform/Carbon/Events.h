#pragma once

enum { kVK_ANSI_N = 0x2D };

/// The modifiers of a hot key. On other keyboards the command key is called Super, the option key
/// Alt.
enum {
    cmdKey = 1 << 8,
    optionKey = 1 << 11,
    controlKey = 1 << 12,
};
