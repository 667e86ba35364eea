#pragma once

#include "AppKit/NSMenu.h"

class TrayIcon;

/// What is seen of a status item, and how it answers to clicks.
class NSStatusBarButton : public NSObject {
public:
    NSStatusBarButton();
    ~NSStatusBarButton() override;

    /// Held weakly; without one the action goes nowhere.
    void setTarget(const std::weak_ptr<NSObject>& target) { m_target = target; }
    void setAction(SEL action) { m_action = std::move(action); }
    /// The events, a set of NSEventMask, that send the action.
    void sendActionOn(NSUInteger mask) { m_actionMask = mask; }
    const std::string& toolTip() const { return m_toolTip; }
    void setToolTip(const std::string& toolTip);

    const std::shared_ptr<NSImage>& image() const { return m_image; }
    void setImage(std::shared_ptr<NSImage> image);

    /// As a click: opens the item's menu until it closes, or closes it; without one, acts.
    void performClick(const id& sender);

    bool isMenuOpen() const;

    /// The tray delivers its clicks here.
    void mouseUp(const NSEvent& event);

private:
    friend class NSStatusItem;

    void sendAction();

    std::weak_ptr<NSObject> m_target;
    SEL m_action;
    NSUInteger m_actionMask = NSEventMaskLeftMouseUp;
    std::shared_ptr<NSMenu> m_menu;
    std::string m_toolTip;
    std::shared_ptr<NSImage> m_image;
    std::unique_ptr<TrayIcon> m_icon;
};

inline constexpr double NSSquareStatusItemLength = -2.0;

/// One item of the status bar, as long as it lives and whenever the desktop has a tray.
class NSStatusItem : public NSObject {
public:
    NSStatusItem() : m_button(std::make_shared<NSStatusBarButton>()) {}
    const std::shared_ptr<NSStatusBarButton>& button() const { return m_button; }

    /// While a menu is attached, a click opens it in place of the action.
    void setMenu(std::shared_ptr<NSMenu> menu) { m_button->m_menu = std::move(menu); }

private:
    std::shared_ptr<NSStatusBarButton> m_button;
};

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
