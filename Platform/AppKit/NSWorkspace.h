#pragma once

#include "Foundation/Foundation.h"

/// Posted on the workspace's own centre.
inline const NSNotificationName NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification =
    "NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification";

/// The desktop around the program: its browser, and its user's wishes for contrast.
class NSWorkspace : public NSObject {
public:
    static NSWorkspace& sharedWorkspace();

    NSNotificationCenter& notificationCenter() { return m_notificationCenter; }

    /// Hands the address to the desktop's browser. False where there is none.
    bool openURL(const NSURL& url);

    /// True while the desktop asks for higher contrast. It is asked at first use.
    bool accessibilityDisplayShouldReduceTransparency() const;

private:
    NSWorkspace();

    NSNotificationCenter m_notificationCenter;
};
