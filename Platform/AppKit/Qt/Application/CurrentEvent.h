#pragma once

#include "AppKit/NSEvent.h"

/// Makes an event the application's current one while it lives.
class CurrentEvent {
public:
    /// The location is the pointer's at the time of the event, where that is known.
    explicit CurrentEvent(const NSEvent& event, std::optional<NSPoint> mouseLocation = {});
    ~CurrentEvent();
    CurrentEvent(const CurrentEvent&) = delete;
    CurrentEvent& operator=(const CurrentEvent&) = delete;

private:
    const std::optional<NSEvent> m_previous;
    const std::optional<NSPoint> m_previousLocation;
};
