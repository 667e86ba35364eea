#pragma once

#include "AppKit/NSEvent.h"
#include "Foundation/NSObject.h"

#include <memory>

class NSView;

class NSMenu : public NSObject {
public:
    /// Opens the menu where the pointer was at the event, and returns when it has closed.
    static void popUpContextMenu(const std::shared_ptr<NSMenu>& menu, const NSEvent& withEvent,
                                 NSView& forView);
};
