#pragma once

#include "AppKit/NSImage.h"

class ViewContent;

/// Makes the content of a window, and keeps its title and size.
class NSViewController : public NSObject {
public:
    const std::string& title() const { return m_title; }
    void setTitle(const std::string& title) {
        if (m_title == title) return;
        m_title = title;
        if (m_titleChanged) m_titleChanged();
    }

    /// In points. 0 by 0 leaves it to what is shown.
    const NSSize& preferredContentSize() const { return m_preferredContentSize; }
    void setPreferredContentSize(const NSSize& size) { m_preferredContentSize = size; }

    /// Called once, when a window with the controller is first centred or comes on the screen.
    virtual std::unique_ptr<ViewContent> loadView() = 0;

    /// For whoever shows the title. A block that is set replaces the one before.
    void onTitleChange(std::function<void()> block) { m_titleChanged = std::move(block); }

private:
    std::string m_title;
    NSSize m_preferredContentSize;
    std::function<void()> m_titleChanged;
};

enum NSTabViewControllerTabStyle : NSInteger { NSTabViewControllerTabStyleToolbar = 2 };

/// One tab: what it says, and who makes what it shows.
class NSTabViewItem : public NSObject {
public:
    static std::shared_ptr<NSTabViewItem>
    tabViewItemWithViewController(std::shared_ptr<NSViewController> controller) {
        return std::shared_ptr<NSTabViewItem>(new NSTabViewItem(std::move(controller)));
    }

    const std::shared_ptr<NSViewController>& viewController() const { return m_viewController; }
    const std::string& label() const { return m_label; }
    void setLabel(const std::string& label) { m_label = label; }

    /// Above the label; null for none.
    const std::shared_ptr<NSImage>& image() const { return m_image; }
    void setImage(std::shared_ptr<NSImage> image) { m_image = std::move(image); }

private:
    explicit NSTabViewItem(std::shared_ptr<NSViewController> controller)
        : m_viewController(std::move(controller)) {}

    const std::shared_ptr<NSViewController> m_viewController;
    std::string m_label;
    std::shared_ptr<NSImage> m_image;
};

/// Shows one of several controllers' views, chosen in a toolbar, and has the chosen one's title.
class NSTabViewController : public NSViewController {
public:
    /// There is the one style.
    void setTabStyle(NSTabViewControllerTabStyle) {}
    const std::vector<std::shared_ptr<NSTabViewItem>>& tabViewItems() const { return m_items; }
    /// The first one added is selected.
    void addTabViewItem(std::shared_ptr<NSTabViewItem> item);

    std::unique_ptr<ViewContent> loadView() override;

private:
    std::vector<std::shared_ptr<NSTabViewItem>> m_items;
};
