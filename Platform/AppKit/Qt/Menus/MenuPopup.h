// Menus on the screen. There is one at a time: as another opens, the one before it closes.
#pragma once

#include "AppKit/NSMenu.h"

#include <QPoint>
#include <QRect>

class QMenu;

// Both return when the menu has closed, its delegate knows and what was chosen has run. A menu
// without items does not open.
void openMenuAt(const std::shared_ptr<NSMenu>& menu, const QPoint& corner);
/// Below the place, or above where there is no room.
void openMenuBeside(const std::shared_ptr<NSMenu>& menu, const QRect& place);

/// Until its delegate hears of the close.
bool isOpen(const NSMenu& menu);

/// False where the menu is not the one that is open.
bool close(const NSMenu& menu);

bool isAnyMenuOpen();

/// The menu as the toolkit shows it. Calls back at each choice.
using Chosen = std::function<void(const std::shared_ptr<NSMenuItem>&)>;
std::unique_ptr<QMenu> nativeMenu(const NSMenu& menu, Chosen chosen);
