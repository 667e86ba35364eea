#pragma once

#include "AppKit/NSTabViewItem.h"
#include "AppKit/NSViewController.h"
#include "Foundation/NSObjCRuntime.h"

#include <memory>
#include <vector>

enum NSTabViewControllerTabStyle : NSInteger { NSTabViewControllerTabStyleToolbar = 2 };

/// Shows one of several controllers' views, chosen in a toolbar on top of the window. Its title is
/// the chosen one's.
class NSTabViewController : public NSViewController {
public:
    /// There is the one style.
    void setTabStyle(NSTabViewControllerTabStyle) {}

    const std::vector<std::shared_ptr<NSTabViewItem>>& tabViewItems() const { return m_items; }
    /// The first one added is selected.
    void addTabViewItem(std::shared_ptr<NSTabViewItem> item);

    /// -1 while there is none.
    NSInteger selectedTabViewItemIndex() const { return m_selected; }
    void setSelectedTabViewItemIndex(NSInteger index);

    std::unique_ptr<ViewContent> loadView() override;

    /// For the view, once there is one.
    std::function<void()> selectionChanged;

private:
    std::vector<std::shared_ptr<NSTabViewItem>> m_items;
    NSInteger m_selected = -1;
};
