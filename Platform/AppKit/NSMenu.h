#pragma once

#include "AppKit/NSEvent.h"
#include "AppKit/NSImage.h"

#include <any>

class NSMenu;
class NSView;

/// One row of a menu. It can be chosen where its action has a target or it opens a submenu.
class NSMenuItem : public NSObject {
public:
    /// The key equivalent is one character, or empty for none.
    NSMenuItem(std::string title, SEL action, std::string keyEquivalent)
        : m_title(std::move(title)), m_action(std::move(action)),
          m_keyEquivalent(std::move(keyEquivalent)) {}
    static std::shared_ptr<NSMenuItem> separatorItem() {
        const auto item = std::make_shared<NSMenuItem>("", nullptr, "");
        item->m_separator = true;
        return item;
    }

    bool isSeparatorItem() const { return m_separator; }
    const std::string& title() const { return m_title; }
    const std::string& keyEquivalent() const { return m_keyEquivalent; }

    /// What is held with the key, a set of NSEventModifierFlags.
    NSUInteger keyEquivalentModifierMask() const { return m_keyEquivalentModifierMask; }
    void setKeyEquivalentModifierMask(NSUInteger mask) { m_keyEquivalentModifierMask = mask; }
    const SEL& action() const { return m_action; }

    /// Held weakly; once it is gone the item can no longer be chosen.
    std::shared_ptr<NSObject> target() const { return m_target.lock(); }
    void setTarget(const std::weak_ptr<NSObject>& target) { m_target = target; }

    /// A symbol takes the colour of the title.
    const std::shared_ptr<NSImage>& image() const { return m_image; }
    void setImage(std::shared_ptr<NSImage> image) { m_image = std::move(image); }

    /// Whatever the program ties to the item; empty for nothing.
    const std::any& representedObject() const { return m_representedObject; }
    void setRepresentedObject(std::any object) { m_representedObject = std::move(object); }
    const std::shared_ptr<NSMenu>& submenu() const { return m_submenu; }
    void setSubmenu(std::shared_ptr<NSMenu> submenu) { m_submenu = std::move(submenu); }

    bool isEnabled() const {
        return !m_separator && (m_submenu || (m_action && !m_target.expired()));
    }

private:
    std::string m_title;
    SEL m_action;
    std::string m_keyEquivalent;
    NSUInteger m_keyEquivalentModifierMask = NSEventModifierFlagCommand;
    std::weak_ptr<NSObject> m_target;
    std::shared_ptr<NSImage> m_image;
    std::any m_representedObject;
    std::shared_ptr<NSMenu> m_submenu;
    bool m_separator = false;
};

class NSMenuDelegate {
public:
    virtual ~NSMenuDelegate() = default;
    /// The menu has left the screen. What was chosen in it runs after this.
    virtual void menuDidClose(NSMenu&) {}
};

/// A list of items. It stands on the screen only while it is open.
class NSMenu : public NSObject {
public:
    explicit NSMenu(std::string title = {}) : m_title(std::move(title)) {}
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
