#pragma once

#include "AppKit/NSStatusItem.h"
#include "Foundation/NSObject.h"

#include <memory>

inline constexpr double NSSquareStatusItemLength = -2.0;

/// The desktop's tray.
class NSStatusBar : public NSObject {
public:
    static NSStatusBar& systemStatusBar() {
        static NSStatusBar bar;
        return bar;
    }

    /// A new item. The tray decides its length: every icon is square there.
    std::shared_ptr<NSStatusItem> statusItemWithLength(double) {
        return std::make_shared<NSStatusItem>();
    }

private:
    NSStatusBar() = default;
};
