#pragma once

#include "AppKit/NSApplication.h"

/// Makes an event the application's current one while it lives.
class CurrentEvent {
public:
    explicit CurrentEvent(const NSEvent& event);
    ~CurrentEvent();
    CurrentEvent(const CurrentEvent&) = delete;
    CurrentEvent& operator=(const CurrentEvent&) = delete;

private:
    const std::optional<NSEvent> m_previous;
};
