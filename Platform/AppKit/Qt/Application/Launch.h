#pragma once

#include "AppKit/NSApplication.h"

#include <QProcessEnvironment>

#include <functional>

/// The environment as the program found it, for those that it starts. It sets some variables for
/// its own libraries alone.
const QProcessEnvironment& foundEnvironment();

/// Calls `quit` from the event loop after a SIGTERM, SIGINT or SIGHUP. Called once.
void watchQuitSignals(std::function<void()> quit);

/// Answers under the bundle identifier on the session bus, where desktops ask an application that
/// runs to show itself. Of several instances the newest one answers. Waits for nothing.
///
/// The request that made the bus start this very process is its launch, and calls nothing.
void answerReopenRequests(std::function<void()> reopen);

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
