// Menus on the screen. There is one at a time: as another opens, the one before it closes.
#pragma once

#include "AppKit/NSMenu.h"

#include <QRect>

class QStyle;

/// Opens below the place, or above where there is no room. Returns when the menu has closed, its
/// delegate knows and what was chosen has run. A menu without items does not open.
void openMenuBeside(const std::shared_ptr<NSMenu>& menu, const QRect& place);

/// Until its delegate hears of the close.
bool isOpen(const NSMenu& menu);

/// False where the menu is not the one that is open.
bool close(const NSMenu& menu);

bool isAnyMenuOpen();

inline constexpr int menuRadius = 8; ///< Of the corners, in points.

/// How menus look: rounded, with a hairline around them, the keys of an item at its right and the
/// images in a column of their own.
QStyle* makeMenuStyle();
