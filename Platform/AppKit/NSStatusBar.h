#pragma once

#include "AppKit/NSStatusItem.h"
#include "Foundation/NSObject.h"

#include <memory>
#include <vector>

inline constexpr double NSSquareStatusItemLength = -2.0;

/// The desktop's tray.
class NSStatusBar : public NSObject {
public:
    static NSStatusBar& systemStatusBar();

    /// A new item. The tray decides its length: every icon is square there.
    std::shared_ptr<NSStatusItem> statusItemWithLength(double length);

private:
    friend std::vector<std::shared_ptr<NSStatusItem>> itemsOf(const NSStatusBar& bar);

    NSStatusBar() = default;

    std::vector<std::weak_ptr<NSStatusItem>> m_items;
};
