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
    NSTabViewControllerTabStyle tabStyle() const { return m_tabStyle; }
    void setTabStyle(NSTabViewControllerTabStyle style) { m_tabStyle = style; }

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
    NSTabViewControllerTabStyle m_tabStyle = NSTabViewControllerTabStyleToolbar;
    std::vector<std::shared_ptr<NSTabViewItem>> m_items;
    NSInteger m_selected = -1;
};
