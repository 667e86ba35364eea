// Brings the program up and holds its home in the status bar.
#pragma once

#include "AppKit/AppKit.h"
#include "Foundation/Foundation.h"

#include <memory>

class AppDelegate : public NSObject,
                    public NSApplicationDelegate,
                    public NSMenuDelegate,
                    public std::enable_shared_from_this<AppDelegate> {
public:
    void applicationDidFinishLaunching(const NSNotification& notification) override;
    bool applicationShouldHandleReopen(NSApplication& sender, bool hasVisibleWindows) override;

    /// The status item's action: turns the blur on or off, or opens the menu.
    void statusClicked();
    void menuDidClose(NSMenu& menu) override;

    // The commands: what the menu's items do.
    void toggleBlur();
    void openSettings();
    void showAbout();
    void supportVARDEK();
    void buySummit();
    void lockedClicked(NSMenuItem& sender);
    void quit();

    /// The program's one menu, which the status item and the floating buttons show, made anew for
    /// each opening.
    std::shared_ptr<NSMenu> makeMenu();

private:
    void handOverFromEarlierInstances();
    void createStatusItem();
    void updateStatusIcon();
    void openStatusMenu();
    void setUpOnFirstRun();

    std::shared_ptr<NSStatusItem> statusItem;
};
