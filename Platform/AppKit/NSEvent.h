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
    /// The location is the pointer's on the screen, where that is known.
    NSEvent(NSEventType type, NSUInteger modifierFlags, std::optional<NSPoint> location = {})
        : m_type(type), m_modifierFlags(modifierFlags), m_location(location) {}
    NSEventType type() const { return m_type; }
    NSUInteger modifierFlags() const { return m_modifierFlags; }

    /// Where the pointer is on the screen; while an event is handled, where it was then.
    static NSPoint mouseLocation();

private:
    NSEventType m_type;
    NSUInteger m_modifierFlags;
    std::optional<NSPoint> m_location;
};
