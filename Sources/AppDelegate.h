// Brings the program up and holds its home in the status bar.
#pragma once

#include "AppKit/AppKit.h"
#include "Foundation/Foundation.h"

#include <memory>

class AppDelegate : public NSObject,
                    public NSApplicationDelegate,
                    public std::enable_shared_from_this<AppDelegate> {
public:
    void applicationDidFinishLaunching(const NSNotification& notification) override;

    /// The status item's action: turns the blur on or off.
    void statusClicked();

private:
    void handOverFromEarlierInstances();
    void createStatusItem();
    void updateStatusIcon();

    std::shared_ptr<NSStatusItem> statusItem;
};
