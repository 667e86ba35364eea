#pragma once

#include "AppKit/NSMenu.h"

#include <QPoint>
#include <QRect>

#include <functional>
#include <memory>

class NativeMenu;

/// A menu on the screen, from its opening to its closing. There is one at a time: as another opens,
/// the one before it closes.
class MenuPopup {
public:
    explicit MenuPopup(const std::shared_ptr<NSMenu>& menu);
    ~MenuPopup();
    MenuPopup(const MenuPopup&) = delete;
    MenuPopup& operator=(const MenuPopup&) = delete;

    /// Both return when the menu has closed, its delegate knows and what was chosen has run. A menu
    /// without items does not open.
    void openAt(const QPoint& corner);
    void openBeside(const QRect& place); ///< Below it, or above where there is no room.

    /// Until its delegate hears of the close.
    static bool isOpen(const NSMenu& menu);

    /// False where the menu is not the one that is open.
    static bool close(const NSMenu& menu);

    /// Whether any menu is.
    static bool isOpen();

private:
    void open(const std::function<QPoint(const QSize&)>& cornerFor);

    const std::shared_ptr<NSMenu> m_menu;
    std::unique_ptr<NativeMenu> m_native;
};
