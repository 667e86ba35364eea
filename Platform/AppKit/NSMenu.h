#pragma once

#include "AppKit/NSEvent.h"
#include "AppKit/NSMenuItem.h"
#include "Foundation/NSObject.h"

#include <memory>
#include <string>
#include <vector>

class NSMenu;
class NSView;

class NSMenuDelegate {
public:
    virtual ~NSMenuDelegate() = default;
    /// The menu has left the screen. What was chosen in it runs after this.
    virtual void menuDidClose(NSMenu&) {}
};

/// A list of items. It stands on the screen only while it is open.
class NSMenu : public NSObject {
public:
    NSMenu() = default;
    explicit NSMenu(std::string title) : m_title(std::move(title)) {}

    const std::string& title() const { return m_title; }

    void addItem(const std::shared_ptr<NSMenuItem>& item) { m_items.push_back(item); }
    const std::vector<std::shared_ptr<NSMenuItem>>& itemArray() const { return m_items; }

    /// Held weakly.
    std::shared_ptr<NSMenuDelegate> delegate() const { return m_delegate.lock(); }
    void setDelegate(const std::weak_ptr<NSMenuDelegate>& delegate) { m_delegate = delegate; }

    /// Opens the menu where the pointer was at the event, and returns when it has closed and what
    /// was chosen in it has run. A menu without items does not open.
    static void popUpContextMenu(const std::shared_ptr<NSMenu>& menu, const NSEvent& withEvent,
                                 NSView& forView);

private:
    std::string m_title;
    std::vector<std::shared_ptr<NSMenuItem>> m_items;
    std::weak_ptr<NSMenuDelegate> m_delegate;
};
