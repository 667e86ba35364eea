#pragma once

#include "AppKit/NSApplication.h"

#include <QProcessEnvironment>

/// The environment as the program found it, for those that it starts. It sets some variables for
/// its own libraries alone.
const QProcessEnvironment& foundEnvironment();

/// Makes an event the application's current one while it lives.
class CurrentEvent {
public:
    /// The location is the pointer's at the time of the event, where that is known.
    explicit CurrentEvent(const NSEvent& event, std::optional<NSPoint> mouseLocation = {});
    ~CurrentEvent();
    CurrentEvent(const CurrentEvent&) = delete;
    CurrentEvent& operator=(const CurrentEvent&) = delete;

    /// Of the event that is being handled.
    static const std::optional<NSPoint>& mouseLocation();

private:
    const std::optional<NSEvent> m_previous;
    const std::optional<NSPoint> m_previousLocation;
};
