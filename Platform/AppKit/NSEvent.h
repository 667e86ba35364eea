#pragma once

#include "Foundation/NSObjCRuntime.h"

enum NSEventType : NSUInteger {
    NSEventTypeLeftMouseUp = 2,
    NSEventTypeRightMouseUp = 4,
};

enum NSEventMask : NSUInteger {
    NSEventMaskLeftMouseUp = 1 << NSEventTypeLeftMouseUp,
    NSEventMaskRightMouseUp = 1 << NSEventTypeRightMouseUp,
};

enum NSEventModifierFlags : NSUInteger { NSEventModifierFlagControl = 1 << 18 };

class NSEvent {
public:
    NSEvent(NSEventType type, NSUInteger modifierFlags)
        : m_type(type), m_modifierFlags(modifierFlags) {}

    NSEventType type() const { return m_type; }
    NSUInteger modifierFlags() const { return m_modifierFlags; }

private:
    NSEventType m_type;
    NSUInteger m_modifierFlags;
};
