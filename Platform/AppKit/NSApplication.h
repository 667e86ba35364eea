#pragma once

#include "AppKit/NSEvent.h"

#include <any>

/// Posted when the set of screens or a screen's geometry has changed.
inline const NSNotificationName NSApplicationDidChangeScreenParametersNotification =
    "NSApplicationDidChangeScreenParametersNotification";
inline const NSNotificationName NSApplicationDidFinishLaunchingNotification =
    "NSApplicationDidFinishLaunchingNotification";

enum NSApplicationActivationPolicy : NSInteger { NSApplicationActivationPolicyAccessory = 1 };

/// Credits, an NSAttributedString with a font, whose size counts, and a colour, of which it counts
/// whether it is that of secondary labels.
inline const std::string NSAboutPanelOptionCredits = "Credits";

class NSApplication;
class NSWindow;

/// What the program is told of its own life. Each call does nothing unless it is overridden.
class NSApplicationDelegate {
public:
    virtual ~NSApplicationDelegate() = default;
    /// The first call, before any event.
    virtual void applicationDidFinishLaunching(const NSNotification&) {}
    /// The user opened the application again while it runs. The answer has no effect here.
    virtual bool applicationShouldHandleReopen(NSApplication&, bool /*hasVisibleWindows*/) {
        return true;
    }
};

/// The running program: its connection to the window server, its event loop and its modal loops.
class NSApplication : public NSObject {
public:
    /// The first call connects to the window server. Where none answers, the process ends.
    static NSApplication& sharedApplication();

    /// Held weakly.
    void setDelegate(const std::weak_ptr<NSApplicationDelegate>& delegate) {
        m_delegate = delegate;
    }

    /// Without effect: the program has no tile in any dock either way.
    void setActivationPolicy(NSApplicationActivationPolicy) {}

    /// Launches the delegate and handles events until the application is asked to terminate.
    void run();

    /// Makes `run` return as soon as the event at hand is done. Before `run`, it is remembered.
    void terminate(const id& sender);

    /// Tells the delegate that the desktop wants the program to show itself.
    void reopen();

    /// The frontmost of the program's open windows, if any, takes the keyboard.
    void activateIgnoringOtherApps(bool flag);

    /// Shows the window, and keeps events from others with a frame, until `stopModalWithCode`,
    /// whose code it returns; NSModalResponseAbort where the application ends before.
    NSInteger runModalForWindow(NSWindow& window);
    void stopModalWithCode(NSInteger code);

    using AboutPanelOptions = std::map<std::string, std::any>;
    /// Shows what the bundle says of the program and the credits, or brings that to the front.
    void orderFrontStandardAboutPanelWithOptions(const AboutPanelOptions& options);

    /// The event that is being handled.
    const std::optional<NSEvent>& currentEvent() const { return m_currentEvent; }
    /// It is the one while the work runs.
    void handle(const NSEvent& event, const std::function<void()>& work);

private:
    NSApplication();

    std::weak_ptr<NSApplicationDelegate> m_delegate;
    std::optional<NSEvent> m_currentEvent;
    std::shared_ptr<NSWindow> m_aboutPanel;
};

/// The shared application, once it has been made.
extern NSApplication* NSApp;

/// A running instance of the application, as it is known on the session bus.
class NSRunningApplication : public NSObject {
public:
    /// The process itself. The first call makes it known to the others.
    static std::shared_ptr<NSRunningApplication> currentApplication();

    /// Oldest first, the current application among them; none without a bus.
    static std::vector<std::shared_ptr<NSRunningApplication>>
    runningApplicationsWithBundleIdentifier(const std::string& bundleIdentifier);

    /// Two objects are equal where they stand for one process.
    bool isEqual(const NSObject& other) const override;

    /// Asks the instance to quit and waits for nothing. True if the request was sent. An instance
    /// that is newer than this one stays, and asks this one to quit instead.
    bool terminate();

private:
    explicit NSRunningApplication(std::string busName) : m_busName(std::move(busName)) {}

    std::string m_busName; ///< Empty without a bus.
};
