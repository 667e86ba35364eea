#pragma once

#include "Foundation/Foundation.h"

enum NSEventType : NSUInteger {
    NSEventTypeLeftMouseDown = 1,
    NSEventTypeLeftMouseUp = 2,
    NSEventTypeRightMouseDown = 3,
    NSEventTypeRightMouseUp = 4,
    NSEventTypeLeftMouseDragged = 6,
    NSEventTypeMouseEntered = 8,
    NSEventTypeMouseExited = 9,
};

enum NSEventMask : NSUInteger {
    NSEventMaskLeftMouseUp = 1 << NSEventTypeLeftMouseUp,
    NSEventMaskRightMouseUp = 1 << NSEventTypeRightMouseUp,
};

enum NSEventModifierFlags : NSUInteger {
    NSEventModifierFlagControl = 1 << 18,
    NSEventModifierFlagOption = 1 << 19,
    NSEventModifierFlagCommand = 1 << 20,
};

/// One event of the mouse: what happened, and the modifiers that were held, NSEventModifierFlags.
class NSEvent {
public:
    NSEvent(NSEventType type, NSUInteger modifierFlags)
        : m_type(type), m_modifierFlags(modifierFlags) {}
    NSEventType type() const { return m_type; }
    NSUInteger modifierFlags() const { return m_modifierFlags; }

    /// Where the pointer is on the screen; while an event is handled, where it was then.
    static NSPoint mouseLocation();

private:
    NSEventType m_type;
    NSUInteger m_modifierFlags;
};
