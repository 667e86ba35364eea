#pragma once

#include "AppKit/NSStatusBarButton.h"
#include "Foundation/NSObject.h"

#include <memory>

inline constexpr double NSSquareStatusItemLength = -2.0;

/// One item of the status bar. It stands there as long as it lives, whenever the desktop has a
/// tray.
class NSStatusItem : public NSObject {
public:
    NSStatusItem() : m_button(std::make_shared<NSStatusBarButton>()) {}

    const std::shared_ptr<NSStatusBarButton>& button() const { return m_button; }

    /// While a menu is attached, a click opens it in place of the action.
    const std::shared_ptr<NSMenu>& menu() const { return m_button->m_menu; }
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
